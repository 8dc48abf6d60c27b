#include "ui/quick_widget_controller.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::FieldsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string IDLE_HINT = "Minutes — you set this.";

Pending pendingOf(const std::string& id, const std::string& participant,
                  const std::string& day = "2024-05-02") {
  return {id, participant, day, Date(0), Date(60), 12, {}};
}

/// Writes down what the widget asks for; may refresh the widget in between, as the program does.
struct NoteTaker : QuickWidgetOwner {
  void enqueueNote(const Participant& participant, const std::string& what, std::int64_t minutes,
                   const std::string& sessionDate) override {
    calls.push_back("note for " + participant.id + ": " + what + ", " + std::to_string(minutes) +
                    " min, " + sessionDate);
    afterEnqueue();
  }
  void removePending(const std::string& id) override { calls.push_back("remove " + id); }
  void widgetClosed() override { calls.emplace_back("closed"); }

  std::vector<std::string> calls;
  std::function<void()> afterEnqueue = [] {};
};

class WidgetTest : public WorldTest {
 protected:
  WidgetTest() { catches({}); }

  /// The program's lists are these now.
  void shows(const std::vector<std::string>& names, const std::vector<Pending>& pendings = {},
             std::size_t queued = 0) {
    controller->refresh(participantsNamed(names), pendings, queued);
  }
  void catches(const std::vector<Pending>& pendings) {
    shows({"Tobias Hargreave", "Lena O'Keefe"}, pendings);
  }
  void queues(std::size_t count) { shows({"Tobias Hargreave", "Lena O'Keefe"}, {}, count); }

  /// The user fills in the form and sends it.
  void sends(const std::string& text, int minutes = 30) {
    widget().type(text);
    widget().pickMinutes(minutes);
    widget().pressSend();
  }

  std::shared_ptr<NoteTaker> owner = std::make_shared<NoteTaker>();
  std::shared_ptr<QuickWidgetController> controller = QuickWidgetController::create(owner);
};

// --- The panel -----------------------------------------------------------------------------------

TEST_F(WidgetTest, ShowsItsFixedTexts) {
  EXPECT_THAT(widget().texts, FieldsAre("VELK — quick note", "Participant", "What did you do?",
                                        "What did you do? One line is enough.", "Minutes",
                                        ElementsAre("15", "30", "45", "60", "90", "120"),
                                        "Send to VELK", "Caught — confirm or skip", "Log", "✕"));
}

TEST_F(WidgetTest, ItStandsInTheCornerUntilItHasASavedPlaceAndLeavesTheKeyboard) {
  controller->present(std::nullopt);
  EXPECT_EQ(widget().place, "bottom right, 24 from the edges");
  EXPECT_TRUE(widget().visible);
  EXPECT_FALSE(widget().key);
  views.frameSaved = true;
  controller->present(std::nullopt);
  EXPECT_EQ(widget().place, "saved");
}

TEST_F(WidgetTest, ClosedByTheUserItTellsItsOwnerWhereThereIsOne) {
  controller->present(std::nullopt);
  widget().close();
  EXPECT_THAT(owner->calls, ElementsAre("closed"));
  owner.reset();
  controller->present(std::nullopt);
  widget().close();
  EXPECT_FALSE(widget().visible);
}

TEST_F(WidgetTest, ThePlaceholderHidesWhileThereIsAnyText) {
  widget().type(" \n");
  EXPECT_TRUE(widget().placeholderHidden) << "blanks count";
  widget().type("");
  EXPECT_FALSE(widget().placeholderHidden);
  widget().setNoteText("x");
  queues(0);
  EXPECT_TRUE(widget().placeholderHidden) << "a refresh sets it right";
}

// --- The chooser ---------------------------------------------------------------------------------

TEST_F(WidgetTest, NamesAreSortedByTheCodePointsOfTheirComposedForm) {
  shows({"bob Smith", "Alice Jones", "Bob Smith"});
  EXPECT_THAT(widget().participants, ElementsAre("Alice Jones", "Bob Smith", "bob Smith"));
  shows({"e\u0301mile Roux", "f Roux", "\u00e9lan Roux", "e Roux"});
  EXPECT_THAT(widget().participants,
              ElementsAre("e Roux", "f Roux", "\u00e9lan Roux", "e\u0301mile Roux"));
}

TEST(SortedByName, KeepsTheGivenOrderOfEqualNames) {
  std::vector<Participant> given;
  for (int number = 0; number < 200; ++number)
    given.push_back({std::to_string(number), number % 3 == 0 ? "Al" : "Lena", "O'Keefe"});
  auto expected = given;
  std::ranges::stable_partition(expected, [](const auto& one) { return one.firstName == "Al"; });
  EXPECT_EQ(sortedByName(given), expected);
}

TEST_F(WidgetTest, TwoOfTheSameNameAreOneItemAndTheFirstGetsTheNote) {
  controller->refresh({{"7", "Lena", "O'Keefe"}, {"5", "Lena", "O'Keefe"}}, {}, 0);
  EXPECT_THAT(widget().participants, ElementsAre("Lena O'Keefe"));
  sends("Phoned");
  EXPECT_THAT(owner->calls, ElementsAre("note for 7: Phoned, 30 min, 2024-05-02"));
}

TEST_F(WidgetTest, AChoiceIsKeptWhileItIsThereElseTheFirstIsChosen) {
  widget().chooseParticipant("Tobias Hargreave");
  shows({"Zoe Abel", "Tobias Hargreave", "Al Best"});
  EXPECT_EQ(widget().selectedParticipant(), "Tobias Hargreave");
  shows({"Zoe Abel", "Al Best"});
  EXPECT_EQ(widget().selectedParticipant(), "Al Best");
  shows({});
  EXPECT_EQ(widget().selectedParticipant(), std::nullopt);
}

TEST_F(WidgetTest, ANameThatIsHostileToTheDrawingIsDrawnHarmlessAndSentAsItIs) {
  const std::vector<Participant> participants = {{"1", "Lena\u202E", "O'Keefe\n"},
                                                 {"2", "Zoe", "Abel"}};
  controller->refresh(participants, {pendingOf("P", "Lena\u202E O'Keefe\n")}, 0);
  EXPECT_THAT(widget().participants, ElementsAre("Lena O'Keefe ", "Zoe Abel"));
  EXPECT_EQ(widget().rows.front().text, "Lena O'Keefe  · ~12m · 2024-05-02");
  widget().chooseParticipant("Zoe Abel");
  widget().clickLog(0);
  sends("Phoned");
  EXPECT_THAT(owner->calls, testing::Contains("note for 1: Phoned, 30 min, 2024-05-02"));
}

TEST_F(WidgetTest, ANameThatLooksLikeAnotherTakesNoneOfItsNotes) {
  controller->refresh({{"1", "Lena\u202A", "O'Keefe"}, {"2", "Lena", "O'Keefe"}},
                      {pendingOf("P", "Lena\u202A O'Keefe")}, 0);
  EXPECT_THAT(widget().participants, ElementsAre("Lena O'Keefe", "Lena O'Keefe (2)"));
  sends("Phoned");
  widget().clickLog(0);
  sends("Phoned again");
  EXPECT_THAT(owner->calls,
              ElementsAre("note for 2: Phoned, 30 min, 2024-05-02",
                          "note for 1: Phoned again, 30 min, 2024-05-02", "remove P"));
}

TEST_F(WidgetTest, NamesThatDifferInvisiblyAreNumbered) {
  controller->refresh(
      {{"1", "Rene\u0301", "Roux"}, {"2", "René", "Roux"}, {"3", "Re\u00ADné", "Roux"}}, {}, 0);
  EXPECT_THAT(widget().participants,
              ElementsAre("Rene\u0301 Roux", "René Roux (2)", "Re\u00ADné Roux (3)"));
}

// --- Caught work ---------------------------------------------------------------------------------

TEST_F(WidgetTest, ACaughtItemIsARowForWhichThePanelIsFitted) {
  const auto fits = widget().fits;
  catches({pendingOf("P", "Lena O'Keefe")});
  EXPECT_THAT(widget().rows, ElementsAre(CaughtRow{"Lena O'Keefe · ~12m · 2024-05-02",
                                                   "Log Lena O'Keefe · ~12m · 2024-05-02",
                                                   "Skip Lena O'Keefe · ~12m · 2024-05-02"}));
  EXPECT_EQ(widget().fits, fits + 1);
}

TEST_F(WidgetTest, AtMostFourRowsAreShownAndTheRestCounted) {
  std::vector<Pending> pendings(5, pendingOf("P", "Lena O'Keefe"));
  pendings[3].participant = "Zoe Abel";
  catches(pendings);
  EXPECT_THAT(widget().rows, SizeIs(4));
  EXPECT_EQ(widget().rows[3].text, "Zoe Abel · ~12m · 2024-05-02");
  EXPECT_EQ(widget().more, "+ 1 more in the menu bar");
  pendings.pop_back();
  catches(pendings);
  EXPECT_THAT(widget().rows, SizeIs(4));
  EXPECT_EQ(widget().more, std::nullopt);
}

TEST_F(WidgetTest, LoggingACaughtItemFillsInAllButNoteAndMinutes) {
  widget().type("half a note");
  catches({pendingOf("P", "Tobias Hargreave")});
  widget().clickLog(0);
  EXPECT_EQ(widget().selectedParticipant(), "Tobias Hargreave");
  EXPECT_EQ(widget().hint, "On screen ≈ 12 min — you set the duration.");
  EXPECT_TRUE(widget().key);
  EXPECT_TRUE(widget().noteFocused);
  EXPECT_EQ(widget().note, "half a note");
  EXPECT_EQ(widget().minutes, std::nullopt);
}

TEST_F(WidgetTest, ACaughtItemOfAnUnknownParticipantLeavesTheChoice) {
  widget().chooseParticipant("Tobias Hargreave");
  catches({pendingOf("P", "Someone Else")});
  widget().clickLog(0);
  EXPECT_EQ(widget().selectedParticipant(), "Tobias Hargreave");
  EXPECT_NE(widget().hint, IDLE_HINT);
}

TEST_F(WidgetTest, SkippingACaughtItemAsksForItsRemovalAndARowThatIsNotThereIsIgnored) {
  catches({pendingOf("P", "Lena O'Keefe"), pendingOf("Q", "Tobias Hargreave")});
  widget().clickSkip(1);
  EXPECT_THAT(owner->calls, ElementsAre("remove Q"));
  widget().clickLog(2);
  widget().clickSkip(2);
  EXPECT_EQ(widget().hint, IDLE_HINT);
  EXPECT_THAT(owner->calls, SizeIs(1));
}

// --- A note --------------------------------------------------------------------------------------

TEST_F(WidgetTest, EverySegmentIsItsMinutes) {
  for (const int minutes : {15, 30, 45, 60, 90, 120}) {
    sends("x", minutes);
    EXPECT_THAT(owner->calls.back(), testing::HasSubstr(std::to_string(minutes) + " min, "));
  }
}

TEST_F(WidgetTest, ANoteIsOfTodayAndTrimmedAtItsEndsOnlyAndTheFormThenEmpty) {
  clock.setLocal({2024, 5, 3, 0, 0, 1});
  controller->present(std::nullopt);
  widget().chooseParticipant("Tobias Hargreave");
  sends(" \t\n Phoned\n  twice \u00a0\r\n", 45);
  EXPECT_THAT(owner->calls, ElementsAre("note for 1: Phoned\n  twice, 45 min, 2024-05-03"));
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
