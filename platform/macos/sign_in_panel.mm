#include "platform/macos/sign_in_panel.h"

#include <utility>

#include "platform/macos/bridge/text.h"
#include "platform/macos/controls/controls.h"

@implementation NWSignInEvents {
  std::weak_ptr<notewick::SignInPanelDelegate> _delegate;
  std::shared_ptr<notewick::BorrowedKeyboard> _keyboard;
}

- (instancetype)initWithDelegate:(std::weak_ptr<notewick::SignInPanelDelegate>)delegate
                        keyboard:(std::shared_ptr<notewick::BorrowedKeyboard>)keyboard {
  self = [super init];
  if (self != nil) {
    _delegate = std::move(delegate);
    _keyboard = std::move(keyboard);
  }
  return self;
}

- (void)signIn:(id)sender {
  if (const auto delegate = _delegate.lock()) delegate->signIn();
}

- (void)windowWillClose:(NSNotification*)notification {
  const bool hadKeyboard = static_cast<NSWindow*>(notification.object).keyWindow;
  if (const auto delegate = _delegate.lock()) delegate->windowWillClose();
  if (hadKeyboard) _keyboard->giveBack();
}

@end

namespace notewick {
namespace {

constexpr CGFloat SIGN_IN_FIELD_WIDTH = 344;
constexpr CGFloat WRAPPING_WIDTH = 340;

NSPanel* makeSignInPanel() {
  return [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, 380, 260)
                                    styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable
                                      backing:NSBackingStoreBuffered
                                        defer:NO];
}

NSProgressIndicator* hiddenSpinner(const std::string& accessibilityLabel) {
  NSProgressIndicator* spinner = [[NSProgressIndicator alloc] initWithFrame:NSZeroRect];
  spinner.style = NSProgressIndicatorStyleSpinning;
  spinner.controlSize = NSControlSizeSmall;
  spinner.hidden = YES;
  spinner.accessibilityLabel = nsString(accessibilityLabel);
  return spinner;
}

void setUpField(NSTextField* field, const std::string& accessibilityLabel) {
  fixWidth(field, SIGN_IN_FIELD_WIDTH);
  field.accessibilityLabel = nsString(accessibilityLabel);
}

}  // namespace

CocoaSignInPanel::CocoaSignInPanel(const SignInTexts& texts,
                                   std::weak_ptr<SignInPanelDelegate> delegate)
    : CocoaPanel(makeSignInPanel()),
      events_([[NWSignInEvents alloc] initWithDelegate:std::move(delegate) keyboard:keyboard_]) {
  setUpPanel(texts);
  panel_.contentView = contents(texts);
  panel_.defaultButtonCell = signIn_.cell;
  panel_.initialFirstResponder = email_;
  fitToContents(panel_);
}

void CocoaSignInPanel::setUpPanel(const SignInTexts& texts) {
  panel_.title = nsString(texts.title);
  panel_.level = NSFloatingWindowLevel;
  panel_.collectionBehavior =
      NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary;
  panel_.releasedWhenClosed = NO;
  panel_.hidesOnDeactivate = NO;
  panel_.delegate = events_;
  panel_.autorecalculatesKeyViewLoop = YES;
}

NSView* CocoaSignInPanel::contents(const SignInTexts& texts) {
  NSTextField* heading = label(texts.heading, [NSFont boldSystemFontOfSize:14], NSColor.labelColor);
  NSTextField* explanation = wrappingLabel(texts.explanation, [NSFont systemFontOfSize:11],
                                           NSColor.secondaryLabelColor, WRAPPING_WIDTH);

  NSTextField* emailLabel = [NSTextField labelWithString:nsString(texts.emailLabel)];
  email_ = [NSTextField textFieldWithString:@""];
  email_.placeholderString = nsString(texts.emailPlaceholder);
  setUpField(email_, texts.emailLabel);

  NSTextField* passwordLabel = [NSTextField labelWithString:nsString(texts.passwordLabel)];
  password_ = [NSSecureTextField textFieldWithString:@""];
  setUpField(password_, texts.passwordLabel);

  error_ = wrappingLabel("", [NSFont systemFontOfSize:11], NSColor.systemRedColor, WRAPPING_WIDTH);

  signIn_ = pushButton(texts.signIn, texts.signIn, events_, @selector(signIn:));
  signIn_.keyEquivalent = @"\r";
  spinner_ = hiddenSpinner(texts.signIn);
  NSView* signInRow = row(@[ signIn_, spinner_ ], 8);

  return contentColumn(
      @[ heading, explanation, emailLabel, email_, passwordLabel, password_, error_, signInRow ],
      10, 18);
}

void CocoaSignInPanel::present() {
  [panel_ center];
  keyboard_->take();
  [panel_ makeKeyAndOrderFront:nil];
  [panel_ makeFirstResponder:email_];
}

void CocoaSignInPanel::presentQuietly() {
  [panel_ center];
  keyboard_->remember();
  [panel_ orderFrontRegardless];
}

void CocoaSignInPanel::orderOut() {
  const bool hadKeyboard = panel_.keyWindow;
  CocoaPanel::orderOut();
  if (hadKeyboard) keyboard_->giveBack();
}

std::string CocoaSignInPanel::email() const { return utf8(email_.stringValue); }

std::string CocoaSignInPanel::password() const { return utf8(password_.stringValue); }

void CocoaSignInPanel::setError(const std::string& text) {
  drag_.whenOver([this, text] {
    announce(error_, text);
    fitToContents(panel_);
  });
}

void CocoaSignInPanel::setBusy(bool busy) {
  signIn_.enabled = !busy;
  spinner_.hidden = !busy;
  if (busy) {
    [spinner_ startAnimation:nil];
  } else {
    [spinner_ stopAnimation:nil];
  }
}

}  // namespace notewick
