#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "platform/macos/panels/borrowed_keyboard.h"
#include "platform/macos/panels/floating_panel.h"
#include "platform/sign_in_panel.h"

/// Takes what the button and the window tell and hands it to the panel's delegate. A panel that the
/// user closes gives the keyboard back.
@interface NWSignInEvents : NSObject <NSWindowDelegate>
- (instancetype)initWithDelegate:(std::weak_ptr<notewick::SignInPanelDelegate>)delegate
                        keyboard:(std::shared_ptr<notewick::BorrowedKeyboard>)keyboard;
- (void)signIn:(id)sender;
@end

namespace notewick {

/// The sign-in panel in native controls. When it goes, the program that was in front before it came
/// has the keyboard again, unless the user has turned to another window meanwhile.
class CocoaSignInPanel final : public CocoaPanel<SignInPanel> {
 public:
  CocoaSignInPanel(const SignInTexts& texts, std::weak_ptr<SignInPanelDelegate> delegate);

  void present() override;
  void presentQuietly() override;
  void orderOut() override;
  [[nodiscard]] std::string email() const override;
  [[nodiscard]] std::string password() const override;
  void setError(const std::string& text) override;
  void setBusy(bool busy) override;

 private:
  void setUpPanel(const SignInTexts& texts);
  [[nodiscard]] NSView* contents(const SignInTexts& texts);

  std::shared_ptr<BorrowedKeyboard> keyboard_ = std::make_shared<BorrowedKeyboard>();
  NWSignInEvents* events_;
  NSTextField* email_;
  NSSecureTextField* password_;
  NSTextField* error_;
  NSButton* signIn_;
  NSProgressIndicator* spinner_;
};

}  // namespace notewick
