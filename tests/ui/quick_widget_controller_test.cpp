#include <gmock/gmock.h>

#include <algorithm>

#include "tests/ui/widget_world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::FieldsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- The panel -----------------------------------------------------------------------------------

TEST_F(WidgetTest, ShowsItsFixedTexts) {
  EXPECT_THAT(widget().texts, FieldsAre("VELK — quick note", "Participant", "What did you do?",
                                        "What did you do? One line is enough.", "Minutes",
                                        ElementsAre("15", "30", "45", "60", "90", "120"),
                                        "Send to VELK", "Caught — confirm or skip", "Log", "✕"));
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
  shows({"Zoe Abel"});
  EXPECT_EQ(widget().selectedParticipant(), "Zoe Abel");
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
  widget().type(" \n");
  EXPECT_TRUE(widget().placeholderHidden) << "blanks count";
  widget().type("");
  EXPECT_FALSE(widget().placeholderHidden);
  widget().setNoteText("x");
  queues(0);
  EXPECT_TRUE(widget().placeholderHidden) << "a refresh sets it right";
}

// --- On screen -----------------------------------------------------------------------------------

TEST_F(WidgetTest, ItStandsInTheCornerUntilItHasASavedPlaceAndLeavesTheKeyboard) {
  controller->present(std::nullopt);
  EXPECT_EQ(widget().place, FakeQuickNotePanel::Place::bottomRight);
  EXPECT_EQ(widget().inset, 24);
  EXPECT_TRUE(widget().visible);
  EXPECT_FALSE(widget().key);
  views.frameSaved = true;
  controller->present(std::nullopt);
  EXPECT_EQ(widget().place, FakeQuickNotePanel::Place::saved);
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

}  // namespace
}  // namespace notewick
