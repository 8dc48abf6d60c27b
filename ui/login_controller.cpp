#include "ui/login_controller.h"

#include "client/base_url.h"
#include "client/velk_client.h"
#include "model/drawn_text.h"
#include "model/unicode.h"
#include "platform/ports.h"

namespace notewick {
namespace {

std::shared_ptr<LoginController> shownController;

SignInTexts signInTexts() {
  return {
      .title = "Sign in to VELK",
      .heading = "Sign in with your VELK account",
      .explanation =
          "Notewick needs your VELK login so confirmed work becomes case notes in your account.",
      .emailLabel = "Email",
      .emailPlaceholder = "name@agency.example",
      .passwordLabel = "Password",
      .signIn = "Sign in",
  };
}

constexpr const char* NO_STORE =
    "No password store on this desktop: the sign-in lasts until you quit.";

std::string explanationOf(const VELKError& error) {
  if (!error.blamesCredentials()) return error.message();
  return "Invalid email or password. If you sign in to VELK with Google, set a password first via "
         "“Forgot password” at " +
         loginPageURL() + ".";
}

}  // namespace

std::shared_ptr<LoginController> LoginController::create(std::function<void()> onSignedIn) {
  const std::shared_ptr<LoginController> controller(new LoginController(std::move(onSignedIn)));
  controller->panel_ = ports().views.makeSignInPanel(signInTexts(), controller);
  return controller;
}

std::shared_ptr<LoginController>& LoginController::current() {
  return shownController;
}

LoginController::LoginController(std::function<void()> onSignedIn)
    : onSignedIn_(std::move(onSignedIn)) {}

void LoginController::show() {
  const bool isOpen = current().get() == this;
  current() = shared_from_this();
  panel_->present();
  if (!isOpen) explainMissingStore();
}

void LoginController::showQuietly() {
  if (current().get() == this) return panel_->orderFrontRegardless();
  current() = shared_from_this();
  panel_->presentQuietly();
  explainMissingStore();
}

// Screen readers speak what appears in a window that is shown.
void LoginController::explainMissingStore() {
  if (VELKClient::shared().keychain().hasNoStore()) panel_->setError(NO_STORE);
}

void LoginController::close() {
  panel_->orderOut();
  releaseCurrent();
}

void LoginController::signIn() {
  if (signingIn_) return;
  const std::string email = trimmedOfBlanks(panel_->email());
  const std::string password = panel_->password();
  if (email.empty() || password.empty()) {
    return panel_->setError("Enter your email and password.");
  }
  panel_->setError("");
  setSigningIn(true);
  VELKClient::shared().login(email, password,
                             [weakSelf = weak_from_this()](const Result<void>& result) {
                               if (const auto self = weakSelf.lock()) self->signInAnswered(result);
                             });
}

void LoginController::setSigningIn(bool signingIn) {
  signingIn_ = signingIn;
  panel_->setBusy(signingIn);
}

void LoginController::signInAnswered(const Result<void>& result) {
  setSigningIn(false);
  if (!result) return panel_->setError(drawnText(explanationOf(result.error())));
  close();
  onSignedIn_();
}

void LoginController::windowWillClose() {
  releaseCurrent();
}

void LoginController::releaseCurrent() {
  if (current().get() == this) current().reset();
  ports().mainLoop.post([self = shared_from_this()] {});
}

}  // namespace notewick
