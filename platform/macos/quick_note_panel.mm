#include "platform/macos/quick_note_panel.h"

#include <utility>

#include "platform/macos/bridge/text.h"
#include "platform/macos/controls/chooser.h"
#include "platform/macos/controls/controls.h"
#include "platform/macos/panels/note_window.h"

@implementation NWQuickNoteEvents {
  std::weak_ptr<notewick::QuickNotePanelDelegate> _delegate;
}

- (instancetype)initWithDelegate:(std::weak_ptr<notewick::QuickNotePanelDelegate>)delegate {
  self = [super init];
  if (self != nil) _delegate = std::move(delegate);
  return self;
}

- (void)send:(id)sender {
  if (const auto delegate = _delegate.lock()) delegate->send();
}

- (void)caughtLog:(NSButton*)sender {
  const auto tag = static_cast<std::size_t>(sender.tag);
  if (const auto delegate = _delegate.lock()) delegate->caughtLog(tag);
}

- (void)caughtSkip:(NSButton*)sender {
  if (notewick::repeatsClick(NSApplication.sharedApplication.currentEvent)) return;
  const auto tag = static_cast<std::size_t>(sender.tag);
  if (const auto delegate = _delegate.lock()) delegate->caughtSkip(tag);
}

- (void)textDidChange:(NSNotification*)notification {
  if (const auto delegate = _delegate.lock()) delegate->textDidChange();
}

- (void)windowWillClose:(NSNotification*)notification {
  if (const auto delegate = _delegate.lock()) delegate->windowWillClose();
}

/// The tabulator key moves the focus, as in a one-line field.
- (BOOL)textView:(NSTextView*)textView doCommandBySelector:(SEL)command {
  if (command == @selector(insertTab:)) {
    [textView.window selectNextKeyView:nil];
  } else if (command == @selector(insertBacktab:)) {
    [textView.window selectPreviousKeyView:nil];
  } else {
    return NO;
  }
  return YES;
}

@end

namespace notewick {
namespace {

constexpr CGFloat FIELD_WIDTH = 296;

NSPanel* makeNotePanel() {
  return [[NWNoteWindow alloc]
      initWithContentRect:NSMakeRect(0, 0, 320, 300)
                styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                          NSWindowStyleMaskUtilityWindow | NSWindowStyleMaskNonactivatingPanel
                  backing:NSBackingStoreBuffered
                    defer:NO];
}

NSPopUpButton* participantChooser(const std::string& accessibilityLabel) {
  NSPopUpButton* chooser = [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO];
  fixWidth(chooser, FIELD_WIDTH);
  chooser.accessibilityLabel = nsString(accessibilityLabel);
  return chooser;
}

NSSegmentedControl* minutesControl(const QuickNoteTexts& texts) {
  NSSegmentedControl* minutes =
      [NSSegmentedControl segmentedControlWithLabels:nsStrings(texts.minutes)
                                        trackingMode:NSSegmentSwitchTrackingSelectOne
                                              target:nil
                                              action:nil];
  minutes.selectedSegment = -1;
  minutes.accessibilityLabel = nsString(texts.minutesLabel);
  return minutes;
}

}  // namespace

CocoaQuickNotePanel::CocoaQuickNotePanel(const QuickNoteTexts& texts,
                                         std::weak_ptr<QuickNotePanelDelegate> delegate)
    : CocoaPanel(makeNotePanel()),
      events_([[NWQuickNoteEvents alloc] initWithDelegate:std::move(delegate)]),
      caught_(texts, events_) {
  setUpPanel(texts);
  panel_.contentView = contents(texts);
  panel_.defaultButtonCell = send_.cell;
  panel_.initialFirstResponder = note_;
}

CocoaQuickNotePanel::~CocoaQuickNotePanel() { [panel_ setFrameAutosaveName:@""]; }

void CocoaQuickNotePanel::makeKeyAndOrderFront() {
  focusNote();
  CocoaPanel::makeKeyAndOrderFront();
}

void CocoaQuickNotePanel::setUpPanel(const QuickNoteTexts& texts) {
  panel_.title = nsString(texts.title);
  panel_.level = NSFloatingWindowLevel;
  panel_.collectionBehavior =
      NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary;
  panel_.releasedWhenClosed = NO;
  panel_.hidesOnDeactivate = NO;
  panel_.becomesKeyOnlyIfNeeded = YES;
  panel_.movableByWindowBackground = YES;
  NSString* autosaveName = @"VELKQuickWidget";
  hasPlace_ = [panel_ setFrameUsingName:autosaveName force:YES];
  [panel_ setFrameAutosaveName:autosaveName];
  panel_.delegate = events_;
  panel_.autorecalculatesKeyViewLoop = YES;
}

NSView* CocoaQuickNotePanel::contents(const QuickNoteTexts& texts) {
  participants_ = participantChooser(texts.participantLabel);
  NSView* noteBox = this->noteBox(texts);
  placeholder_ = label(texts.placeholder, [NSFont systemFontOfSize:11], NSColor.tertiaryLabelColor);
  minutes_ = minutesControl(texts);
  hint_ = label("", [NSFont systemFontOfSize:10], NSColor.secondaryLabelColor);
  send_ = pushButton(texts.send, texts.send, events_, @selector(send:));
  send_.keyEquivalent = @"\r";
  status_ = label("", [NSFont systemFontOfSize:10], NSColor.secondaryLabelColor);
  NSView* sendRow = row(@[ send_, status_ ], 8);
  caughtHeader_ =
      label(texts.caughtHeader, [NSFont boldSystemFontOfSize:11], NSColor.secondaryLabelColor);
  caughtHeader_.hidden = YES;
  return contentColumn(
      @[
        participants_, noteBox, keepingItsRoom(placeholder_), minutes_, hint_, sendRow,
        caughtHeader_, caught_.view()
      ],
      8, 12);
}

NSView* CocoaQuickNotePanel::noteBox(const QuickNoteTexts& texts) {
  NSScrollView* box = NSTextView.scrollableTextView;
  box.hasVerticalScroller = NO;
  box.borderType = NSBezelBorder;
  fixHeight(box, 56);
  fixWidth(box, FIELD_WIDTH);
  note_ = static_cast<NSTextView*>(box.documentView);
  note_.richText = NO;
  note_.font = [NSFont systemFontOfSize:13];
  note_.textColor = NSColor.textColor;
  note_.autoresizingMask = NSViewWidthSizable;
  note_.textContainerInset = NSMakeSize(4, 6);
  note_.delegate = events_;
  note_.allowsUndo = YES;
  note_.accessibilityLabel = nsString(texts.noteLabel);
  return box;
}

void CocoaQuickNotePanel::setParticipants(const std::vector<std::string>& titles,
                                          std::optional<std::size_t> selected) {
  titles_ = titles;
  setItems(participants_, titles);
  selectItem(participants_, selected);
}

std::optional<std::string> CocoaQuickNotePanel::selectedParticipant() const {
  const auto selected = selectedItem(participants_);
  if (!selected) return std::nullopt;
  return titles_[*selected];
}

std::string CocoaQuickNotePanel::noteText() const { return utf8(note_.string); }

void CocoaQuickNotePanel::setNoteText(const std::string& text) {
  note_.string = nsString(text);
  [note_.undoManager removeAllActions];
}

void CocoaQuickNotePanel::focusNote() { [panel_ makeFirstResponder:note_]; }

void CocoaQuickNotePanel::setPlaceholderHidden(bool hidden) { placeholder_.hidden = hidden; }

std::optional<std::size_t> CocoaQuickNotePanel::selectedMinutes() const {
  const NSInteger segment = minutes_.selectedSegment;
  if (segment < 0) return std::nullopt;
  return static_cast<std::size_t>(segment);
}

void CocoaQuickNotePanel::deselectMinutes() { minutes_.selectedSegment = -1; }

void CocoaQuickNotePanel::setHint(const std::string& text) {
  hint_.stringValue = nsString(text);
  minutes_.accessibilityLabel = nsString(text);
}

void CocoaQuickNotePanel::setStatus(const std::string& text) { announce(status_, text); }

void CocoaQuickNotePanel::setCaught(const std::vector<CaughtRow>& rows,
                                    const std::optional<std::string>& more) {
  drag_.whenOver([this, rows, more] { showCaught(rows, more); });
}

void CocoaQuickNotePanel::showCaught(const std::vector<CaughtRow>& rows,
                                     const std::optional<std::string>& more) {
  if (!caught_.setRows(rows, more)) return;
  caughtHeader_.hidden = rows.empty();
  [panel_ recalculateKeyViewLoop];
  const bool focusHasGone = panel_.firstResponder == panel_;
  if (focusHasGone) focusNote();
}

void CocoaQuickNotePanel::fitToContents() {
  drag_.whenOver([this] { notewick::fitToContents(panel_); });
}

bool CocoaQuickNotePanel::applySavedFrame() {
  if (hasPlace_) drag_.whenOver([this] { pullOntoScreen(panel_); });
  return hasPlace_;
}

void CocoaQuickNotePanel::placeAtBottomRight(double inset) {
  NSScreen* screen = NSScreen.mainScreen;
  if (screen == nil) return;
  const NSRect visible = screen.visibleFrame;
  [panel_ setFrameOrigin:NSMakePoint(NSMaxX(visible) - NSWidth(panel_.frame) - inset,
                                     NSMinY(visible) + inset)];
  hasPlace_ = true;
}

}  // namespace notewick
