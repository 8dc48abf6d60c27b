#include "tests/macos/quick_note_panel_fixture.h"

namespace notewick {
namespace {

TEST_F(MacosQuickNotePanelTest, ShowsItselfWithoutActivatingTheProgram) {
  panel_->orderFrontRegardless();
  EXPECT_TRUE(native().visible);
  EXPECT_FALSE(native().keyWindow);
  panel_->orderOut();
  EXPECT_FALSE(native().visible);
}

TEST_F(MacosQuickNotePanelTest, CallsEveryControlByAName) {
  panel_->setCaught(TWO_ROWS, std::nullopt);
  EXPECT_EQ(utf8(only<NSPopUpButton>(NSPopUpButton.class).accessibilityLabel), "Participant");
  EXPECT_EQ(utf8(note().accessibilityLabel), "What did you do?");
  EXPECT_EQ(utf8(only<NSView>(NSSegmentedControl.class).accessibilityLabel), "Minutes");
  panel_->setHint("On screen ≈ 12 min");
  EXPECT_EQ(utf8(only<NSView>(NSSegmentedControl.class).accessibilityLabel), "On screen ≈ 12 min");
  EXPECT_EQ(utf8(buttons(native(), "Send to VELK").at(0).accessibilityLabel), "Send to VELK");
  EXPECT_EQ(utf8(buttons(native(), "Log").at(1).accessibilityLabel), "Log Tobias");
  EXPECT_EQ(utf8(buttons(native(), "✕").at(0).accessibilityLabel), "Skip Lena");
}

TEST_F(MacosQuickNotePanelTest, SendsByItsDefaultButton) {
  NSButton* send = buttons(native(), "Send to VELK").at(0);
  EXPECT_EQ(native().defaultButtonCell, send.cell);
  [send performClick:nil];
  EXPECT_THAT(delegate_->log, testing::ElementsAre("send"));
}

TEST_F(MacosQuickNotePanelTest, SendsByCommandReturnFromAnywhereOnceEvenIfHeldDown) {
  panel_->makeKeyAndOrderFront();
  EXPECT_TRUE(takesReturn(NSEventModifierFlagCommand));
  EXPECT_TRUE(takesReturn(NSEventModifierFlagCommand, @"\r", YES));
  [native() makeFirstResponder:nil];
  EXPECT_TRUE(takesReturn(NSEventModifierFlagCommand, @"\x03"));
  EXPECT_THAT(delegate_->log, testing::ElementsAre("send", "send"));
  takesReturn(NSEventModifierFlagCommand | NSEventModifierFlagShift);
  takesReturn(NSEventModifierFlagOption);
  EXPECT_EQ(delegate_->log.size(), 2U);
}

TEST_F(MacosQuickNotePanelTest, ListsParticipantsAndSelectsOne) {
  EXPECT_EQ(panel_->selectedParticipant(), std::nullopt);
  panel_->setParticipants({"Alice Jones", "Bob Smith"}, 1);
  EXPECT_EQ(panel_->selectedParticipant(), "Bob Smith");
  panel_->setParticipants({}, std::nullopt);
  EXPECT_EQ(panel_->selectedParticipant(), std::nullopt);
}

TEST_F(MacosQuickNotePanelTest, ChoosesNoMinutesByItself) {
  EXPECT_EQ(panel_->selectedMinutes(), std::nullopt);
  NSSegmentedControl* minutes = only<NSSegmentedControl>(NSSegmentedControl.class);
  EXPECT_EQ(utf8([minutes labelForSegment:1]), "120");
  minutes.selectedSegment = 1;
  EXPECT_EQ(panel_->selectedMinutes(), 1U);
  panel_->deselectMinutes();
  EXPECT_EQ(panel_->selectedMinutes(), std::nullopt);
}

TEST_F(MacosQuickNotePanelTest, TellsAndUndoesWhatTheUserTypesButNothingOfASentNote) {
  [note() insertText:@"Called Lena" replacementRange:NSMakeRange(0, 0)];
  EXPECT_EQ(panel_->noteText(), "Called Lena");
  EXPECT_TRUE(eventually([this] { return note().undoManager.canUndo; }));
  panel_->setNoteText("");
  EXPECT_FALSE(note().undoManager.canUndo);
  EXPECT_EQ(panel_->noteText(), "");
  EXPECT_THAT(delegate_->log, testing::ElementsAre("text"));
}

TEST_F(MacosQuickNotePanelTest, TakesTheKeyboardIntoTheNoteWhateverHadItBefore) {
  panel_->makeKeyAndOrderFront();
  EXPECT_EQ(native().firstResponder, note());
  [native() makeFirstResponder:nil];
  panel_->makeKeyAndOrderFront();
  EXPECT_EQ(native().firstResponder, note());
}

TEST_F(MacosQuickNotePanelTest, LeavesTheNoteByTheTabulatorKey) {
  panel_->makeKeyAndOrderFront();
  panel_->focusNote();
  [static_cast<NSResponder*>(note()) doCommandBySelector:@selector(insertTab:)];
  EXPECT_EQ(panel_->noteText(), "");
  [static_cast<NSResponder*>(note()) doCommandBySelector:@selector(insertNewline:)];
  EXPECT_EQ(panel_->noteText(), "\n");
}

TEST_F(MacosQuickNotePanelTest, TellsOfAUserClosingItAloneAndSurvives) {
  for (int time = 0; time < 2; ++time) {
    panel_->orderFrontRegardless();
    panel_->orderOut();
    panel_->orderFrontRegardless();
    [native() performClose:nil];
  }
  EXPECT_THAT(delegate_->log, testing::ElementsAre("close", "close"));
  panel_->orderFrontRegardless();
  panel_.reset();
  EXPECT_EQ(delegate_->log.size(), 2U);
}

TEST_F(MacosQuickNotePanelTest, IsSilentWithoutADelegate) {
  const std::weak_ptr<RecordingDelegate> gone = delegate_;
  delegate_.reset();
  [buttons(native(), "Send to VELK").at(0) performClick:nil];
  EXPECT_TRUE(gone.expired());
}

}  // namespace
}  // namespace notewick
