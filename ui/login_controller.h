#pragma once

#include <functional>
#include <memory>

#include "client/velk_error.h"
#include "platform/sign_in_panel.h"

namespace notewick {

/// The panel in which the user signs in. `current` keeps the controller alive while its panel is
/// open; the next opening makes a new controller. Main thread.
class LoginController : public SignInPanelDelegate,
                        public std::enable_shared_from_this<LoginController> {
 public:
  /// `onSignedIn` is called once, after a successful sign-in.
  [[nodiscard]] static std::shared_ptr<LoginController> create(std::function<void()> onSignedIn);

  /// The controller whose panel is open, or null.
  [[nodiscard]] static std::shared_ptr<LoginController>& current();

  /// Opens the panel, or brings it forward with what was typed. Where the system has no secret
  /// store a panel that opens says how long the sign-in will last.
  void show();

  /// Shows the panel above other windows and leaves the keyboard where it is, so that nobody who is
  /// typing is interrupted.
  void showQuietly();

  /// Takes the panel off the screen, as after a sign-in.
  void close();

  void signIn() override;
  void windowWillClose() override;

 private:
  explicit LoginController(std::function<void()> onSignedIn);

  void explainMissingStore();
  void setSigningIn(bool signingIn);
  void signInAnswered(const Result<void>& result);
  void releaseCurrent();

  std::unique_ptr<SignInPanel> panel_;
  std::function<void()> onSignedIn_;
  bool signingIn_ = false;  ///< one request at a time
};

}  // namespace notewick
