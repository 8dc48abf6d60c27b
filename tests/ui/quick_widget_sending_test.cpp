#include <gmock/gmock.h>

#include "tests/ui/widget_world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// --- A note --------------------------------------------------------------------------------------

TEST_F(WidgetTest, EverySegmentIsItsMinutes) {
  for (const int minutes : {15, 30, 45, 60, 90, 120}) {
    sends("x", minutes);
    EXPECT_THAT(owner->calls.back(), HasSubstr(", " + std::to_string(minutes) + " min, "));
  }
}

TEST_F(WidgetTest, ANoteIsOfTodayAndTrimmedAtItsEndsOnly) {
  clock.setLocal({2024, 5, 3, 0, 0, 1});
  widget().chooseParticipant("Tobias Hargreave");
  sends(" \t\n Phoned\n  twice \u00a0\r\n", 45);
  EXPECT_THAT(owner->calls, ElementsAre("note for 1: Phoned\n  twice, 45 min, 2024-05-03"));
}

TEST_F(WidgetTest, AfterSendingTheFormIsEmptyAndStaysOpen) {
  controller->present(std::nullopt);
  widget().chooseParticipant("Tobias Hargreave");
  sends("Phoned");
  EXPECT_EQ(widget().note, "");
  EXPECT_FALSE(widget().placeholderHidden);
  EXPECT_EQ(widget().minutes, std::nullopt);
  EXPECT_EQ(widget().selectedParticipant(), "Tobias Hargreave");
  EXPECT_EQ(widget().status, "Sent — finish it on VELK");
  EXPECT_TRUE(widget().visible);
  EXPECT_EQ(workspace.beeps, 0);
}

// --- A note that confirms caught work ------------------------------------------------------------

class ConfirmingTest : public WidgetTest {
 protected:
  /// The user has clicked on "Log" beside caught work of yesterday.
  ConfirmingTest() {
    catches({pendingOf("P", "Lena O'Keefe", "2024-05-01")});
    widget().clickLog(0);
  }
};

TEST_F(ConfirmingTest, ItIsOfTheDayOfTheWorkWhichLeavesTheList) {
  owner->afterEnqueue = [this] { catches({}); };
  sends("Phoned");
  EXPECT_THAT(owner->calls, ElementsAre("note for 2: Phoned, 30 min, 2024-05-01", "remove P"));
  EXPECT_EQ(widget().hint, IDLE_HINT);
  sends("Visited");
  EXPECT_THAT(owner->calls, SizeIs(3)) << "the form confirms nothing any longer";
}

TEST_F(ConfirmingTest, WorkThatDisappearedMeanwhileIsForgotten) {
  catches({});
  EXPECT_NE(widget().hint, IDLE_HINT) << "the hint stays";
  sends("Phoned");
  EXPECT_THAT(owner->calls, ElementsAre("note for 2: Phoned, 30 min, 2024-05-02"));
}

TEST_F(ConfirmingTest, WorkThatTheListNeverShowedLeavesToo) {
  controller->present(pendingOf("Q", "Lena O'Keefe", "2024-04-30"));
  sends("Phoned");
  EXPECT_THAT(owner->calls, ElementsAre("note for 2: Phoned, 30 min, 2024-05-02", "remove Q"));
}

TEST_F(ConfirmingTest, WithoutAnOwnerTheFormIsResetAllTheSame) {
  owner.reset();
  widget().clickSkip(0);
  sends("Phoned");
  EXPECT_EQ(widget().note, "");
  EXPECT_EQ(widget().hint, IDLE_HINT);
}

// --- What is missing, in the order in which it is asked for --------------------------------------

TEST_F(WidgetTest, WithoutMinutesItAsksForThem) {
  widget().pressSend();
  EXPECT_EQ(widget().status, "Pick a duration");
  EXPECT_EQ(workspace.beeps, 1);
  EXPECT_FALSE(widget().noteFocused) << "the keyboard stays where it is";
  EXPECT_THAT(owner->calls, IsEmpty());
}

TEST_F(WidgetTest, ABlankNoteIsRefusedAndGetsTheFocus) {
  shows({});
  sends(" \n\t\u00a0\u2028");
  EXPECT_EQ(widget().status, "Say what you did");
  EXPECT_TRUE(widget().noteFocused);
  EXPECT_EQ(workspace.beeps, 1);
  EXPECT_EQ(widget().minutes, 1u);
  EXPECT_THAT(owner->calls, IsEmpty());
}

TEST_F(WidgetTest, WithoutAKnownParticipantItOnlyBeeps) {
  shows({});
  sends("Phoned");
  widget().setParticipants({"Somebody Else"}, 0);
  widget().pressSend();
  EXPECT_EQ(workspace.beeps, 2);
  EXPECT_EQ(widget().status, "");
  EXPECT_EQ(widget().note, "Phoned");
  EXPECT_THAT(owner->calls, IsEmpty());
}

// --- The status line -----------------------------------------------------------------------------

TEST_F(WidgetTest, EveryFlashHasFourSecondsOfItsOwn) {
  widget().pressSend();
  advance(3);
  widget().pressSend();
  advance(3.9);
  EXPECT_EQ(widget().status, "Pick a duration");
  advance(0.1);
  EXPECT_EQ(widget().status, "");
}

TEST_F(WidgetTest, QueuedNotesAreCountedAndReplaceAFlashWhoseEndEmptiesTheLine) {
  widget().pressSend();
  queues(0);
  EXPECT_EQ(widget().status, "Pick a duration") << "nothing to count";
  queues(2);
  EXPECT_EQ(widget().status, "2 queued — will retry");
  advance(4);
  EXPECT_EQ(widget().status, "");
  queues(1);
  EXPECT_EQ(widget().status, "1 queued — will retry");
  queues(0);
  EXPECT_EQ(widget().status, "");
}

TEST_F(WidgetTest, AFlashOfAWidgetThatIsGoneDoesNothing) {
  widget().pressSend();
  controller.reset();
  advance(4);
  EXPECT_EQ(views.quickNote, nullptr);
}

}  // namespace
}  // namespace notewick
