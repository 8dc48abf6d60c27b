#include "platform/macos/quick_note_panel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/text.h"
#include "tests/macos/eventually.h"
#include "tests/macos/view_search.h"

namespace notewick {
namespace {

const QuickNoteTexts TEXTS = {"VELK — quick note",
                              "Participant",
                              "What did you do?",
                              "What did you do? One line is enough.",
                              "Minutes",
                              {"15", "30", "45", "60", "90", "120"},
                              "Send to VELK",
                              "Caught — confirm or skip",
                              "Log",
                              "✕"};

const std::vector<CaughtRow> TWO_ROWS = {
    {"Lena O'Keefe · ~12m · 2024-05-02", "Log Lena", "Skip Lena"},
    {"Tobias Hargreave · ~3m · 2024-05-02", "Log Tobias", "Skip Tobias"}};

class RecordingDelegate : public QuickNotePanelDelegate {
 public:
  void send() override { log.push_back("send"); }
  void caughtLog(std::size_t tag) override { log.push_back("log " + std::to_string(tag)); }
  void caughtSkip(std::size_t tag) override { log.push_back("skip " + std::to_string(tag)); }
  void textDidChange() override { log.push_back("text"); }
  void windowWillClose() override { log.push_back("close"); }

  std::vector<std::string> log;
};

class MacosQuickNotePanelTest : public testing::Test {
 protected:
  MacosQuickNotePanelTest() {
    [NSWindow removeFrameUsingName:@"VELKQuickWidget"];
    remake();
  }

  void remake() {
    panel_.reset();
    panel_ = std::make_unique<CocoaQuickNotePanel>(TEXTS, delegate_);
    panel_->setHint("Minutes — you set this.");
    panel_->setCaught({}, std::nullopt);
    panel_->fitToContents();
  }

  [[nodiscard]] NSPanel* native() const { return panel_->native(); }
  [[nodiscard]] NSRect visible() const { return NSScreen.mainScreen.visibleFrame; }
  template <class View>
  [[nodiscard]] View* only(Class kind) const {
    const auto found = viewsOf(native(), kind);
    EXPECT_EQ(found.size(), 1U);
    return static_cast<View*>(found.at(0));
  }
  [[nodiscard]] NSTextView* note() const { return only<NSTextView>(NSTextView.class); }
  void type(NSString* text) const {
    [note() insertText:text replacementRange:NSMakeRange(note().string.length, 0)];
  }

  /// Whether the panel takes Return, pressed with these modifiers, before its controls get it.
  bool takesReturn(NSEventModifierFlags modifiers, NSString* key = @"\r",
                   BOOL repeated = NO) const {
    NSEvent* pressed = [NSEvent keyEventWithType:NSEventTypeKeyDown
                                        location:NSMakePoint(0, 0)
                                   modifierFlags:modifiers
                                       timestamp:0
                                    windowNumber:native().windowNumber
                                         context:nil
                                      characters:key
                     charactersIgnoringModifiers:key
                                       isARepeat:repeated
                                         keyCode:0];
    return [native() performKeyEquivalent:pressed];
  }
  /// What the tabulator key goes through after the note, were every control to take the keyboard.
  [[nodiscard]] std::vector<NSView*> keyViewLoop() const {
    [native() selectKeyViewFollowingView:note()];
    std::vector<NSView*> loop;
    for (NSView* view = note().nextKeyView; view != nil && view != note() && loop.size() < 100;
         view = view.nextKeyView) {
      loop.push_back(view);
    }
    return loop;
  }
  /// The buttons of as many rows.
  [[nodiscard]] std::vector<NSView*> buttonsOf(std::size_t rows) const {
    std::vector<NSView*> found;
    for (std::size_t row = 0; row < rows; ++row) {
      found.push_back(buttons(native(), "Log").at(row));
      found.push_back(buttons(native(), "✕").at(row));
    }
    return found;
  }

  std::shared_ptr<RecordingDelegate> delegate_ = std::make_shared<RecordingDelegate>();
  std::unique_ptr<CocoaQuickNotePanel> panel_;
};

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

TEST_F(MacosQuickNotePanelTest, ShowsRowsWithTheirButtons) {
  panel_->setCaught(TWO_ROWS, "+ 2 more in the menu bar");
  NSTextField* row = textField(native(), TWO_ROWS[1].text);
  ASSERT_NE(row, nil);
  EXPECT_EQ(row.lineBreakMode, NSLineBreakByTruncatingTail);
  EXPECT_NE(textField(native(), "+ 2 more in the menu bar"), nil);
  EXPECT_EQ(buttons(native(), "Log").at(1).controlSize, NSControlSizeSmall);
  [buttons(native(), "Log").at(1) performClick:nil];
  [buttons(native(), "✕").at(0) performClick:nil];
  EXPECT_THAT(delegate_->log, testing::ElementsAre("log 1", "skip 0"));
}

TEST_F(MacosQuickNotePanelTest, SetsTheButtonsOfItsRowsInTheSmallFont) {
  panel_->setCaught(TWO_ROWS, std::nullopt);
  const CGFloat small = [NSFont systemFontSizeForControlSize:NSControlSizeSmall];
  EXPECT_EQ(buttons(native(), "Log").at(0).font.pointSize, small);
  EXPECT_EQ(buttons(native(), "✕").at(1).font.pointSize, small);
}

TEST_F(MacosQuickNotePanelTest, LeavesRowsAloneThatHaveNotChanged) {
  panel_->setCaught(TWO_ROWS, std::nullopt);
  NSButton* log = buttons(native(), "Log").at(0);
  panel_->setCaught(TWO_ROWS, std::nullopt);
  EXPECT_EQ(buttons(native(), "Log").at(0), log);
}

TEST_F(MacosQuickNotePanelTest, TakesNoPressOnARowThatHasGone) {
  panel_->setCaught(TWO_ROWS, std::nullopt);
  NSButton* pressed = buttons(native(), "✕").at(0);
  panel_->setCaught({TWO_ROWS[1]}, std::nullopt);
  [pressed performClick:nil];
  EXPECT_TRUE(delegate_->log.empty());
}

TEST_F(MacosQuickNotePanelTest, LeadsTheTabulatorKeyThroughNewRows) {
  panel_->setCaught(TWO_ROWS, std::nullopt);
  panel_->fitToContents();
  EXPECT_THAT(keyViewLoop(), testing::IsSupersetOf(buttonsOf(TWO_ROWS.size())));
}

TEST_F(MacosQuickNotePanelTest, PutsTheKeyboardIntoTheNoteWhenTheRowThatHadItHasGone) {
  panel_->setCaught(TWO_ROWS, std::nullopt);
  if (![native() makeFirstResponder:buttons(native(), "Log").at(0)]) {
    GTEST_SKIP() << "buttons take no keyboard without full keyboard access";
  }
  panel_->setCaught({}, std::nullopt);
  EXPECT_EQ(native().firstResponder, note());
}

TEST_F(MacosQuickNotePanelTest, CutsLongRowsAtTheirEnd) {
  panel_->setCaught({{std::string(200, 'x'), "Log", "Skip"}}, std::nullopt);
  panel_->fitToContents();
  EXPECT_LE(laidOutWidth(textField(native(), std::string(200, 'x'))), 190);
}

TEST_F(MacosQuickNotePanelTest, HidesTheHeaderWithoutRows) {
  EXPECT_TRUE(textField(native(), TEXTS.caughtHeader).hidden);
  panel_->setCaught(TWO_ROWS, std::nullopt);
  EXPECT_FALSE(textField(native(), TEXTS.caughtHeader).hidden);
}

TEST_F(MacosQuickNotePanelTest, GrowsAndShrinksWithItsRows) {
  const CGFloat plain = NSHeight(native().frame);
  panel_->setCaught(TWO_ROWS, std::nullopt);
  panel_->fitToContents();
  EXPECT_GT(NSHeight(native().frame), plain);
  panel_->setCaught({}, std::nullopt);
  panel_->fitToContents();
  EXPECT_EQ(NSHeight(native().frame), plain);
}

TEST_F(MacosQuickNotePanelTest, KeepsTheRoomOfTheHiddenPlaceholder) {
  const CGFloat shown = native().contentView.fittingSize.height;
  panel_->setPlaceholderHidden(true);
  EXPECT_TRUE(textField(native(), TEXTS.placeholder).hidden);
  EXPECT_EQ(native().contentView.fittingSize.height, shown);
}

TEST_F(MacosQuickNotePanelTest, LeavesNoRoomForRowsThatAreNotThere) {
  NSView* sendRow = buttons(native(), "Send to VELK").at(0).superview;
  EXPECT_EQ(NSMinY(placeInWindow(sendRow)), 12) << "stands on the inset";
}

TEST_F(MacosQuickNotePanelTest, StandsInTheBottomRightCornerUntilItHasAPlace) {
  EXPECT_FALSE(panel_->applySavedFrame());
  panel_->placeAtBottomRight(24);
  EXPECT_EQ(NSMaxX(native().frame), NSMaxX(visible()) - 24);
  EXPECT_EQ(NSMinY(native().frame), NSMinY(visible()) + 24);
  EXPECT_TRUE(panel_->applySavedFrame());
}

TEST_F(MacosQuickNotePanelTest, GrowsUpwardsInTheBottomRightCorner) {
  panel_->placeAtBottomRight(24);
  panel_->setCaught(TWO_ROWS, std::nullopt);
  panel_->fitToContents();
  EXPECT_EQ(NSMinY(native().frame), NSMinY(visible()) + 24);
}

TEST_F(MacosQuickNotePanelTest, ComesBackWhereItWasLeft) {
  panel_->placeAtBottomRight(24);
  panel_->orderFrontRegardless();
  [native() setFrameOrigin:NSMakePoint(NSMinX(visible()) + 100, NSMinY(visible()) + 150)];
  [native() saveFrameUsingName:@"VELKQuickWidget"];
  const NSRect left = native().frame;
  remake();
  EXPECT_TRUE(panel_->applySavedFrame());
  EXPECT_TRUE(NSEqualRects(native().frame, left));
}

TEST_F(MacosQuickNotePanelTest, ComesBackOntoTheScreen) {
  [native() setFrameOrigin:NSMakePoint(NSMaxX(visible()) + 5000, NSMinY(visible()))];
  [native() saveFrameUsingName:@"VELKQuickWidget"];
  remake();
  EXPECT_TRUE(panel_->applySavedFrame());
  EXPECT_TRUE(NSContainsRect(visible(), native().frame));
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
  delegate_.reset();
  [buttons(native(), "Send to VELK").at(0) performClick:nil];
}

}  // namespace
}  // namespace notewick
