#pragma once

#include <string>

#include "platform/sign_in_panel.h"
#include "tests/support/fake_panel.h"

namespace notewick {

class FakeViews;

/// The sign-in panel as the user sees it and works it.
class FakeSignInPanel : public FakePanel<SignInPanel, SignInPanelDelegate> {
 public:
  FakeSignInPanel(FakeViews& views, SignInTexts fixedTexts,
                  std::weak_ptr<SignInPanelDelegate> owner);
  ~FakeSignInPanel() override;

  void present() override;
  void presentQuietly() override { orderFrontRegardless(); }
  [[nodiscard]] std::string email() const override { return typedEmail; }
  [[nodiscard]] std::string password() const override { return typedPassword; }
  void setError(const std::string& text) override { error = text; }
  void setBusy(bool isBusy) override { busy = isBusy; }

  // What the user does.
  void type(const std::string& newEmail, const std::string& newPassword);
  /// Presses the button, or Return in a field; nothing while the button is disabled.
  void pressSignIn();
  void close();

  SignInTexts texts;
  std::string typedEmail;
  std::string typedPassword;
  std::string error;
  bool busy = false;
  int presented = 0;

 private:
  FakeViews& views_;
};

}  // namespace notewick
