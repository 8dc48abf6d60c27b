#include <gmock/gmock.h>

#include <algorithm>

#include "tests/ui/widget_world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- The panel -----------------------------------------------------------------------------------

TEST_F(WidgetTest, ShowsItsFixedTexts) {
  const auto& texts = widget().texts;
  EXPECT_EQ(texts.title, "VELK — quick note");
  EXPECT_EQ(texts.placeholder, "What did you do? One line is enough.");
  EXPECT_THAT(texts.minutes, ElementsAre("15", "30", "45", "60", "90", "120"));
  EXPECT_EQ(texts.send, "Send to VELK");
  EXPECT_EQ(texts.caughtHeader, "Caught — confirm or skip");
  EXPECT_EQ(texts.log, "Log");
  EXPECT_EQ(texts.skip, "✕");
}

TEST_F(WidgetTest, StartsIdleWithoutMinutes) {
  EXPECT_EQ(widget().hint, IDLE_HINT);
  EXPECT_EQ(widget().minutes, std::nullopt);
  EXPECT_EQ(widget().status, "");
  EXPECT_FALSE(widget().placeholderHidden);
  EXPECT_FALSE(widget().visible);
}

// --- The chooser ---------------------------------------------------------------------------------

TEST_F(WidgetTest, NamesAreSortedByCodePointNotByLocale) {
  shows({"bob Smith", "Alice Jones", "Bob Smith"});
  EXPECT_THAT(widget().participants, ElementsAre("Alice Jones", "Bob Smith", "bob Smith"));
  shows({"adam Best", "Zoe Abel"});
  EXPECT_THAT(widget().participants, ElementsAre("Zoe Abel", "adam Best"));
}

TEST_F(WidgetTest, NamesAreSortedByTheirComposedForm) {
  shows({"e\u0301mile Roux", "f Roux", "\u00e9lan Roux", "e Roux"});
  EXPECT_THAT(widget().participants,
              ElementsAre("e Roux", "f Roux", "\u00e9lan Roux", "e\u0301mile Roux"));
}

TEST(SortedByName, KeepsTheGivenOrderOfManyEqualNames) {
  std::vector<Participant> given;
  for (int number = 0; number < 200; ++number)
    given.push_back({std::to_string(number), number % 3 == 0 ? "Al" : "Lena", "O'Keefe"});
  auto expected = given;
  std::ranges::stable_partition(expected, [](const auto& one) { return one.firstName == "Al"; });
  EXPECT_EQ(sortedByName(given), expected);
}

TEST(SortedByName, KeepsTheGivenOrderOfEqualNames) {
  EXPECT_THAT(sortedByName({{"2", "Lena", "O'Keefe"}, {"3", "Al", "B"}, {"1", "Lena", "O'Keefe"}}),
              ElementsAre(Participant{"3", "Al", "B"}, Participant{"2", "Lena", "O'Keefe"},
                          Participant{"1", "Lena", "O'Keefe"}));
}

TEST_F(WidgetTest, TwoOfTheSameNameAreOneItemAndTheFirstGetsTheNote) {
  controller->refresh({{"7", "Lena", "O'Keefe"}, {"5", "Lena", "O'Keefe"}}, {}, 0);
  EXPECT_THAT(widget().participants, ElementsAre("Lena O'Keefe"));
  sends("Phoned");
  EXPECT_EQ(owner->notes.front().participantId, "7");
}

TEST_F(WidgetTest, AChoiceIsKeptOverARefresh) {
  widget().chooseParticipant("Tobias Hargreave");
  shows({"Zoe Abel", "Tobias Hargreave", "Al Best"});
  EXPECT_EQ(widget().selectedParticipant(), "Tobias Hargreave");
}

TEST_F(WidgetTest, WhenTheChoiceIsGoneTheFirstIsChosen) {
  widget().chooseParticipant("Tobias Hargreave");
  shows({"Zoe Abel", "Al Best"});
  EXPECT_EQ(widget().selectedParticipant(), "Al Best");
}

TEST_F(WidgetTest, WithoutParticipantsNothingIsChosen) {
  shows({});
  EXPECT_EQ(widget().selectedParticipant(), std::nullopt);
  shows({"Zoe Abel"});
  EXPECT_EQ(widget().selectedParticipant(), "Zoe Abel");
}

// --- Caught work ---------------------------------------------------------------------------------

TEST_F(WidgetTest, ACaughtItemIsARow) {
  catches({pendingOf("P", "Lena O'Keefe")});
  ASSERT_THAT(widget().rows, SizeIs(1));
  EXPECT_EQ(widget().rows[0].text, "Lena O'Keefe · ~12m · 2024-05-02");
  EXPECT_EQ(widget().rows[0].logLabel, "Log Lena O'Keefe · ~12m · 2024-05-02");
  EXPECT_EQ(widget().rows[0].skipLabel, "Skip Lena O'Keefe · ~12m · 2024-05-02");
  EXPECT_EQ(widget().more, std::nullopt);
}

TEST_F(WidgetTest, AtMostFourRowsAreShownAndTheRestCounted) {
  std::vector<Pending> pendings;
  for (int number = 1; number <= 6; ++number)
    pendings.push_back(pendingOf(std::to_string(number), "Client " + std::to_string(number)));
  catches(pendings);
  EXPECT_THAT(widget().rowTexts(),
              ElementsAre("Client 1 · ~12m · 2024-05-02", "Client 2 · ~12m · 2024-05-02",
                          "Client 3 · ~12m · 2024-05-02", "Client 4 · ~12m · 2024-05-02"));
  EXPECT_EQ(widget().more, "+ 2 more in the menu bar");
  pendings.resize(5);
  catches(pendings);
  EXPECT_EQ(widget().more, "+ 1 more in the menu bar");
  pendings.resize(4);
  catches(pendings);
  EXPECT_THAT(widget().rows, SizeIs(4));
  EXPECT_EQ(widget().more, std::nullopt);
}

TEST_F(WidgetTest, WithoutCaughtWorkThereAreNoRows) {
  catches({pendingOf("P", "Lena O'Keefe")});
  catches({});
  EXPECT_THAT(widget().rows, IsEmpty());
}

TEST_F(WidgetTest, ThePanelFitsItsRowsAfterEveryRefresh) {
  const auto fits = widget().fits;
  catches({pendingOf("P", "Lena O'Keefe")});
  EXPECT_EQ(widget().fits, fits + 1);
}

TEST_F(WidgetTest, LoggingACaughtItemFillsTheForm) {
  widget().type("half a note");
  widget().pickMinutes(45);
  catches({pendingOf("P", "Tobias Hargreave")});
  widget().clickLog(0);
  EXPECT_EQ(widget().selectedParticipant(), "Tobias Hargreave");
  EXPECT_EQ(widget().hint, "On screen ≈ 12 min — you set the duration.");
  EXPECT_TRUE(widget().key);
  EXPECT_TRUE(widget().visible);
  EXPECT_TRUE(widget().noteFocused);
  EXPECT_EQ(widget().note, "half a note");
  EXPECT_EQ(widget().minutes, 2u);
}

TEST_F(WidgetTest, LoggingACaughtItemChoosesNoMinutes) {
  catches({pendingOf("P", "Tobias Hargreave")});
  widget().clickLog(0);
  EXPECT_EQ(widget().minutes, std::nullopt);
  widget().type("Phoned");
  widget().pressSend();
  EXPECT_EQ(widget().status, "Pick a duration");
}

TEST_F(WidgetTest, ACaughtItemOfAnUnknownParticipantLeavesTheChoice) {
  widget().chooseParticipant("Tobias Hargreave");
  catches({pendingOf("P", "Someone Else")});
  widget().clickLog(0);
  EXPECT_EQ(widget().selectedParticipant(), "Tobias Hargreave");
  EXPECT_EQ(widget().hint, "On screen ≈ 12 min — you set the duration.");
}

TEST_F(WidgetTest, SkippingACaughtItemAsksForItsRemoval) {
  catches({pendingOf("P", "Lena O'Keefe"), pendingOf("Q", "Tobias Hargreave")});
  widget().clickSkip(1);
  EXPECT_THAT(owner->calls, ElementsAre("remove Q"));
}

TEST_F(WidgetTest, ARowThatIsNotThereIsIgnored) {
  catches({pendingOf("P", "Lena O'Keefe")});
  widget().clickLog(1);
  widget().clickSkip(1);
  EXPECT_EQ(widget().hint, IDLE_HINT);
  EXPECT_THAT(owner->calls, IsEmpty());
}

// --- The placeholder -----------------------------------------------------------------------------

TEST_F(WidgetTest, ThePlaceholderHidesWhileThereIsAnyText) {
  widget().type("x");
  EXPECT_TRUE(widget().placeholderHidden);
  widget().type(" \n");
  EXPECT_TRUE(widget().placeholderHidden) << "blanks count";
  widget().type("");
  EXPECT_FALSE(widget().placeholderHidden);
}

TEST_F(WidgetTest, ARefreshSetsThePlaceholderRight) {
  widget().setNoteText("x");
  queues(0);
  EXPECT_TRUE(widget().placeholderHidden);
}

// --- On screen -----------------------------------------------------------------------------------

TEST_F(WidgetTest, WithoutASavedPlaceItStandsAtTheBottomRight) {
  controller->present(std::nullopt);
  EXPECT_EQ(widget().place, FakeQuickNotePanel::Place::bottomRight);
  EXPECT_EQ(widget().inset, 24);
  EXPECT_TRUE(widget().visible);
  EXPECT_FALSE(widget().key) << "it does not take the keyboard";
}

TEST_F(WidgetTest, ASavedPlaceIsTakenUpAgain) {
  views.frameSaved = true;
  controller->present(std::nullopt);
  EXPECT_EQ(widget().place, FakeQuickNotePanel::Place::saved);
  EXPECT_TRUE(widget().visible);
}

TEST_F(WidgetTest, PresentedWithAPendingItIsFilledAndTakesTheKeyboard) {
  controller->present(pendingOf("P", "Tobias Hargreave"));
  EXPECT_EQ(widget().selectedParticipant(), "Tobias Hargreave");
  EXPECT_TRUE(widget().key);
  EXPECT_TRUE(widget().noteFocused);
  EXPECT_EQ(widget().place, FakeQuickNotePanel::Place::bottomRight);
}

TEST_F(WidgetTest, HidingIsNoClosing) {
  controller->present(std::nullopt);
  controller->orderOut();
  EXPECT_FALSE(widget().visible);
  EXPECT_THAT(owner->calls, IsEmpty());
}

TEST_F(WidgetTest, ClosedByTheUserItTellsAndCanComeBack) {
  controller->present(std::nullopt);
  widget().close();
  EXPECT_THAT(owner->calls, ElementsAre("closed"));
  views.frameSaved = true;
  controller->present(std::nullopt);
  EXPECT_TRUE(widget().visible);
  EXPECT_EQ(widget().place, FakeQuickNotePanel::Place::saved);
  EXPECT_EQ(views.quickNotesMade, 1);
}

TEST_F(WidgetTest, ClosedWithoutAnOwnerItTellsNobody) {
  controller->present(std::nullopt);
  const std::weak_ptr<NoteTaker> gone = owner;
  owner.reset();
  widget().close();
  EXPECT_TRUE(gone.expired());
}

}  // namespace
}  // namespace notewick
