#include "tests/macos/quick_note_panel_fixture.h"

namespace notewick {
namespace {

TEST_F(MacosQuickNotePanelTest, IsAFloatingUtilityWindow) {
  EXPECT_EQ(utf8(native().title), "VELK — quick note");
  EXPECT_EQ(native().styleMask, NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                    NSWindowStyleMaskUtilityWindow |
                                    NSWindowStyleMaskNonactivatingPanel);
  EXPECT_EQ(native().level, NSFloatingWindowLevel);
  EXPECT_EQ(native().collectionBehavior, NSWindowCollectionBehaviorCanJoinAllSpaces |
                                             NSWindowCollectionBehaviorFullScreenAuxiliary);
  EXPECT_FALSE(native().hidesOnDeactivate);
  EXPECT_FALSE(native().releasedWhenClosed);
  EXPECT_TRUE(native().becomesKeyOnlyIfNeeded);
  EXPECT_TRUE(native().movableByWindowBackground);
  EXPECT_EQ(utf8(native().frameAutosaveName), "VELKQuickWidget");
}

TEST_F(MacosQuickNotePanelTest, LaysItsControlsOutBelowEachOther) {
  NSStackView* contents = static_cast<NSStackView*>(native().contentView);
  EXPECT_EQ(contents.orientation, NSUserInterfaceLayoutOrientationVertical);
  EXPECT_EQ(contents.spacing, 8);
  EXPECT_EQ(contents.edgeInsets.left, 12);
  EXPECT_EQ(contents.edgeInsets.bottom, 12);
  EXPECT_EQ(contents.arrangedSubviews.count, 8U);
  EXPECT_EQ(laidOutWidth(contents), 320);
  EXPECT_EQ(laidOutWidth(only<NSView>(NSPopUpButton.class)), 296);
  NSScrollView* box = only<NSScrollView>(NSScrollView.class);
  EXPECT_EQ(laidOutWidth(box), 296);
  EXPECT_EQ(NSHeight(box.frame), 56);
  EXPECT_FALSE(box.hasVerticalScroller);
  EXPECT_EQ(box.borderType, NSBezelBorder);
}

TEST_F(MacosQuickNotePanelTest, SetsItsTextInTheSystemFont) {
  EXPECT_EQ(note().font.pointSize, 13);
  EXPECT_FALSE(note().richText);
  EXPECT_EQ(note().textContainerInset.width, 4);
  EXPECT_EQ(note().textContainerInset.height, 6);
  EXPECT_EQ(textField(native(), TEXTS.placeholder).font.pointSize, 11);
  EXPECT_EQ(textField(native(), "Minutes — you set this.").font.pointSize, 10);
  EXPECT_EQ(textField(native(), TEXTS.caughtHeader).font.pointSize, 11);
}

TEST_F(MacosQuickNotePanelTest, CallsEveryControlByAName) {
  panel_->setCaught(TWO_ROWS, std::nullopt);
  EXPECT_EQ(utf8(only<NSPopUpButton>(NSPopUpButton.class).accessibilityLabel), "Participant");
  EXPECT_EQ(utf8(note().accessibilityLabel), "What did you do?");
  EXPECT_EQ(utf8(only<NSView>(NSSegmentedControl.class).accessibilityLabel), "Minutes");
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

TEST_F(MacosQuickNotePanelTest, SendsByCommandReturnFromTheNoteAndFromAnywhereElse) {
  panel_->makeKeyAndOrderFront();
  EXPECT_TRUE(takesReturn(NSEventModifierFlagCommand));
  [native() makeFirstResponder:nil];
  EXPECT_TRUE(takesReturn(NSEventModifierFlagCommand, @"\x03"));
  EXPECT_THAT(delegate_->log, testing::ElementsAre("send", "send"));
}

TEST_F(MacosQuickNotePanelTest, SendsOnceWhileCommandReturnIsHeldDown) {
  panel_->makeKeyAndOrderFront();
  EXPECT_TRUE(takesReturn(NSEventModifierFlagCommand, @"\r", YES));
  EXPECT_TRUE(delegate_->log.empty());
}

TEST_F(MacosQuickNotePanelTest, SendsByNoOtherModifierWithReturn) {
  panel_->makeKeyAndOrderFront();
  takesReturn(NSEventModifierFlagCommand | NSEventModifierFlagShift);
  takesReturn(NSEventModifierFlagOption);
  EXPECT_TRUE(delegate_->log.empty());
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
  ASSERT_EQ(minutes.segmentCount, 6);
  EXPECT_EQ(utf8([minutes labelForSegment:5]), "120");
  minutes.selectedSegment = 4;
  EXPECT_EQ(panel_->selectedMinutes(), 4U);
  panel_->deselectMinutes();
  EXPECT_EQ(panel_->selectedMinutes(), std::nullopt);
}

TEST_F(MacosQuickNotePanelTest, TellsWhatTheUserTypesButNotWhatTheProgramSets) {
  type(@"Called Lena");
  EXPECT_EQ(panel_->noteText(), "Called Lena");
  EXPECT_THAT(delegate_->log, testing::ElementsAre("text"));
  panel_->setNoteText("");
  EXPECT_EQ(panel_->noteText(), "");
  EXPECT_EQ(delegate_->log.size(), 1U);
}

TEST_F(MacosQuickNotePanelTest, UndoesTypingButNothingOfASentNote) {
  type(@"Called Lena");
  EXPECT_TRUE(eventually([this] { return note().undoManager.canUndo; }));
  panel_->setNoteText("");
  EXPECT_FALSE(note().undoManager.canUndo);
}

TEST_F(MacosQuickNotePanelTest, MovesTheFocusIntoTheNote) {
  panel_->orderFrontRegardless();
  [native() makeFirstResponder:nil];
  panel_->focusNote();
  EXPECT_EQ(native().firstResponder, note());
}

TEST_F(MacosQuickNotePanelTest, TakesTheKeyboardIntoTheNoteWhateverHadItBefore) {
  EXPECT_EQ(native().initialFirstResponder, note());
  panel_->makeKeyAndOrderFront();
  EXPECT_EQ(native().firstResponder, note());
  [native() makeFirstResponder:nil];
  panel_->orderOut();
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

TEST_F(MacosQuickNotePanelTest, ShowsItselfWithoutActivatingTheProgram) {
  panel_->orderFrontRegardless();
  EXPECT_TRUE(native().visible);
  EXPECT_FALSE(native().keyWindow);
  panel_->orderOut();
  EXPECT_FALSE(native().visible);
}

TEST_F(MacosQuickNotePanelTest, TellsOfAUserClosingItAndSurvives) {
  panel_->orderFrontRegardless();
  panel_->orderOut();
  EXPECT_TRUE(delegate_->log.empty());
  panel_->orderFrontRegardless();
  [native() performClose:nil];
  EXPECT_THAT(delegate_->log, testing::ElementsAre("close"));
  panel_->orderFrontRegardless();
  EXPECT_TRUE(native().visible);
}

TEST_F(MacosQuickNotePanelTest, IsSilentWhenDestroyedOrWithoutADelegate) {
  panel_->orderFrontRegardless();
  panel_.reset();
  EXPECT_TRUE(delegate_->log.empty());
  remake();
  const std::weak_ptr<RecordingDelegate> gone = delegate_;
  delegate_.reset();
  [buttons(native(), "Send to VELK").at(0) performClick:nil];
  EXPECT_TRUE(gone.expired());
}

}  // namespace
}  // namespace notewick
