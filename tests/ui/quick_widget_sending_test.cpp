#include <gmock/gmock.h>

#include "tests/ui/widget_world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// --- Sending -------------------------------------------------------------------------------------

TEST_F(WidgetTest, ANoteGoesToTheChosenParticipant) {
  widget().chooseParticipant("Tobias Hargreave");
  sends("Phoned", 45);
  EXPECT_THAT(owner->notes, ElementsAre(NoteTaker::Note{"1", "Phoned", 45, "2024-05-02"}));
}

TEST_F(WidgetTest, EverySegmentIsItsMinutes) {
  for (const int minutes : {15, 30, 45, 60, 90, 120}) {
    sends("x", minutes);
    EXPECT_EQ(owner->notes.back().minutes, minutes);
  }
}

TEST_F(WidgetTest, OnlyTheEndsOfANoteAreTrimmed) {
  sends(" \t\n Phoned\n  twice \u00a0\r\n");
  EXPECT_EQ(owner->notes.front().what, "Phoned\n  twice");
}

TEST_F(WidgetTest, AnIdleFormIsOfToday) {
  clock.setLocal({2024, 5, 3, 0, 0, 1});
  sends("Phoned");
  EXPECT_EQ(owner->notes.front().sessionDate, "2024-05-03");
}

TEST_F(WidgetTest, ACaughtItemOfYesterdayIsOfYesterdayAndLeavesTheList) {
  catches({pendingOf("P", "Lena O'Keefe", "2024-05-01")});
  widget().clickLog(0);
  sends("Phoned");
  EXPECT_EQ(owner->notes.front().sessionDate, "2024-05-01");
  EXPECT_THAT(owner->calls, ElementsAre("enqueue Phoned", "remove P"));
}

TEST_F(WidgetTest, TheCaughtItemLeavesAlsoWhenTheQueueingRefreshedTheWidget) {
  catches({pendingOf("P", "Lena O'Keefe")});
  widget().clickLog(0);
  owner->afterEnqueue = [this] { catches({}); };
  sends("Phoned");
  EXPECT_THAT(owner->calls, ElementsAre("enqueue Phoned", "remove P"));
}

TEST_F(WidgetTest, AConfirmedItemThatTheListNeverShowedLeavesToo) {
  controller->present(pendingOf("P", "Lena O'Keefe", "2024-05-01"));
  sends("Phoned");
  EXPECT_EQ(owner->notes.front().sessionDate, "2024-05-02");
  EXPECT_THAT(owner->calls, ElementsAre("enqueue Phoned", "remove P"));
}

TEST_F(WidgetTest, ACaughtItemThatDisappearedIsForgotten) {
  catches({pendingOf("P", "Lena O'Keefe", "2024-05-01")});
  widget().clickLog(0);
  catches({});
  EXPECT_EQ(widget().hint, "On screen ≈ 12 min — you set the duration.") << "the hint stays";
  sends("Phoned");
  EXPECT_EQ(owner->notes.front().sessionDate, "2024-05-02");
  EXPECT_THAT(owner->calls, ElementsAre("enqueue Phoned"));
  EXPECT_EQ(widget().hint, IDLE_HINT);
}

TEST_F(WidgetTest, AfterSendingTheFormIsEmptyAndStaysOpen) {
  catches({pendingOf("P", "Tobias Hargreave", "2024-05-01")});
  controller->present(std::nullopt);
  widget().clickLog(0);
  sends("Phoned");
  EXPECT_EQ(widget().note, "");
  EXPECT_FALSE(widget().placeholderHidden);
  EXPECT_EQ(widget().minutes, std::nullopt);
  EXPECT_EQ(widget().hint, IDLE_HINT);
  EXPECT_EQ(widget().selectedParticipant(), "Tobias Hargreave");
  EXPECT_EQ(widget().status, "Sent — finish it on VELK");
  EXPECT_TRUE(widget().visible);
  EXPECT_EQ(workspace.beeps, 0);
  sends("Visited");
  EXPECT_EQ(owner->notes.back().sessionDate, "2024-05-02") << "it confirms nothing any longer";
}

TEST_F(WidgetTest, WithoutMinutesItAsksForThem) {
  widget().type("Phoned");
  widget().pressSend();
  EXPECT_EQ(widget().status, "Pick a duration");
  EXPECT_EQ(workspace.beeps, 1);
  EXPECT_EQ(widget().note, "Phoned");
  EXPECT_FALSE(widget().noteFocused) << "the keyboard stays where it is";
  EXPECT_THAT(owner->calls, IsEmpty());
}

TEST_F(WidgetTest, ABlankNoteIsRefusedAndGetsTheFocus) {
  for (const auto* const blank : {"", "   ", " \n\t\r\n ", "\u00a0\u2028"}) {
    widget().noteFocused = false;
    sends(blank);
    EXPECT_EQ(widget().status, "Say what you did");
    EXPECT_TRUE(widget().noteFocused);
  }
  EXPECT_EQ(workspace.beeps, 4);
  EXPECT_EQ(widget().minutes, 1u);
  EXPECT_THAT(owner->calls, IsEmpty());
}

TEST_F(WidgetTest, MinutesAreAskedForBeforeTheNote) {
  widget().pressSend();
  EXPECT_EQ(widget().status, "Pick a duration");
}

TEST_F(WidgetTest, TheNoteIsAskedForBeforeTheParticipant) {
  shows({});
  sends(" ");
  EXPECT_EQ(widget().status, "Say what you did");
}

TEST_F(WidgetTest, WithoutAChoiceItOnlyBeeps) {
  shows({});
  sends("Phoned");
  EXPECT_EQ(workspace.beeps, 1);
  EXPECT_EQ(widget().status, "");
  EXPECT_EQ(widget().note, "Phoned");
  EXPECT_THAT(owner->calls, IsEmpty());
}

TEST_F(WidgetTest, AChoiceThatIsNobodyOnlyBeeps) {
  widget().setParticipants({"Somebody Else"}, 0);
  sends("Phoned");
  EXPECT_EQ(workspace.beeps, 1);
  EXPECT_EQ(widget().status, "");
  EXPECT_THAT(owner->calls, IsEmpty());
}

TEST_F(WidgetTest, WithoutAnOwnerTheFormIsResetAllTheSame) {
  catches({pendingOf("P", "Lena O'Keefe")});
  widget().clickLog(0);
  owner.reset();
  widget().clickSkip(0);
  sends("Phoned");
  EXPECT_EQ(widget().note, "");
  EXPECT_EQ(widget().hint, IDLE_HINT);
  EXPECT_EQ(widget().status, "Sent — finish it on VELK");
}

// --- The status line -----------------------------------------------------------------------------

TEST_F(WidgetTest, AFlashedTextIsGoneAfterFourSeconds) {
  widget().pressSend();
  advance(3.9);
  EXPECT_EQ(widget().status, "Pick a duration");
  advance(0.1);
  EXPECT_EQ(widget().status, "");
}

TEST_F(WidgetTest, ASecondFlashGetsItsOwnFourSeconds) {
  widget().pressSend();
  advance(3);
  widget().pressSend();
  advance(3);
  EXPECT_EQ(widget().status, "Pick a duration");
  EXPECT_THAT(loop.runningTimers(), ElementsAre(4));
  advance(1);
  EXPECT_EQ(widget().status, "");
}

TEST_F(WidgetTest, QueuedNotesAreCounted) {
  queues(1);
  EXPECT_EQ(widget().status, "1 queued — will retry");
  queues(2);
  EXPECT_EQ(widget().status, "2 queued — will retry");
  queues(0);
  EXPECT_EQ(widget().status, "");
}

TEST_F(WidgetTest, ARefreshWithAnEmptyOutboxLeavesAFlash) {
  widget().pressSend();
  queues(0);
  EXPECT_EQ(widget().status, "Pick a duration");
}

TEST_F(WidgetTest, QueuedNotesReplaceAFlashWhoseTimerThenEmptiesTheLine) {
  widget().pressSend();
  advance(1);
  queues(2);
  EXPECT_EQ(widget().status, "2 queued — will retry");
  advance(2.9);
  EXPECT_EQ(widget().status, "2 queued — will retry");
  advance(0.1);
  EXPECT_EQ(widget().status, "");
  queues(2);
  EXPECT_EQ(widget().status, "2 queued — will retry");
}

TEST_F(WidgetTest, AfterAFlashTheCountGoesWithTheLastNote) {
  widget().pressSend();
  advance(4);
  queues(1);
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
