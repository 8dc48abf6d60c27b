#include "tests/macos/quick_note_panel_fixture.h"

namespace notewick {
namespace {

using MacosCaughtListTest = MacosQuickNotePanelTest;

TEST_F(MacosCaughtListTest, ShowsRowsWithTheirButtonsBelowAHeader) {
  EXPECT_TRUE(textField(native(), TEXTS.caughtHeader).hidden);
  panel_->setCaught(TWO_ROWS, "+ 2 more in the menu bar");
  EXPECT_FALSE(textField(native(), TEXTS.caughtHeader).hidden);
  EXPECT_NE(textField(native(), TWO_ROWS[1].text), nil);
  EXPECT_NE(textField(native(), "+ 2 more in the menu bar"), nil);
  [buttons(native(), "Log").at(1) performClick:nil];
  [buttons(native(), "✕").at(0) performClick:nil];
  EXPECT_THAT(delegate_->log, testing::ElementsAre("log 1", "skip 0"));
}

TEST_F(MacosCaughtListTest, LeavesRowsAloneThatStayAndTakesNoPressOnOneThatHasGone) {
  panel_->setCaught(TWO_ROWS, std::nullopt);
  NSButton* log = buttons(native(), "Log").at(0);
  NSButton* pressed = buttons(native(), "✕").at(0);
  panel_->setCaught(TWO_ROWS, std::nullopt);
  EXPECT_EQ(buttons(native(), "Log").at(0), log);
  panel_->setCaught({TWO_ROWS[1]}, std::nullopt);
  [pressed performClick:nil];
  EXPECT_TRUE(delegate_->log.empty());
}

NSEvent* mouseEvent(NSEventType type, NSInteger clickCount) {
  return [NSEvent mouseEventWithType:type
                            location:NSMakePoint(0, 0)
                       modifierFlags:0
                           timestamp:0
                        windowNumber:0
                             context:nil
                         eventNumber:0
                          clickCount:clickCount
                            pressure:0];
}

TEST_F(MacosCaughtListTest, KnowsTheSecondHalfOfADoubleClick) {
  EXPECT_FALSE(repeatsClick(mouseEvent(NSEventTypeLeftMouseUp, 1)));
  EXPECT_TRUE(repeatsClick(mouseEvent(NSEventTypeLeftMouseUp, 2)));
  EXPECT_FALSE(repeatsClick(mouseEvent(NSEventTypeLeftMouseUp, 3))) << "the next double click";
  EXPECT_FALSE(repeatsClick(nil));
}

TEST_F(MacosCaughtListTest, LeadsTheTabulatorKeyThroughNewRows) {
  panel_->setCaught(TWO_ROWS, std::nullopt);
  panel_->fitToContents();
  for (const auto* const title : {"Log", "✕"}) {
    EXPECT_THAT(keyViewLoop(), testing::IsSupersetOf(buttons(native(), title)));
  }
}

TEST_F(MacosCaughtListTest, PutsTheKeyboardIntoTheNoteWhenTheRowThatHadItHasGone) {
  panel_->setCaught(TWO_ROWS, std::nullopt);
  // Buttons take the keyboard only where the user has switched on full keyboard access.
  const bool rowHasKeyboard = [native() makeFirstResponder:buttons(native(), "Log").at(0)];
  NSResponder* const before = native().firstResponder;
  panel_->setCaught({}, std::nullopt);
  EXPECT_EQ(native().firstResponder, rowHasKeyboard ? note() : before);
}

TEST_F(MacosCaughtListTest, CutsLongRowsAtTheirEnd) {
  panel_->setCaught({{std::string(200, 'x'), "Log", "Skip"}}, std::nullopt);
  panel_->fitToContents();
  NSTextField* text = textField(native(), std::string(200, 'x'));
  [native() layoutIfNeeded];
  EXPECT_LE(NSWidth([text alignmentRectForFrame:text.frame]), 190) << "without shadows";
}

}  // namespace
}  // namespace notewick
