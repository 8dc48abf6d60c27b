#include <utility>

#include "app/app_delegate.h"
#include "client/velk_client.h"
#include "ui/login_controller.h"

namespace notewick {

void AppDelegate::showLogin() {
  if (!LoginController::current() && VELKClient::shared().keychain().isLocked()) {
    return askToUnlock();
  }
  signInOffered_ = true;
  loginController()->show();
}

void AppDelegate::askToSignIn() {
  if (!signInOffered_ && !LoginController::current()) return showLogin();
  loginController()->showQuietly();
}

std::shared_ptr<LoginController> AppDelegate::loginController() {
  signInWaits_ = false;
  if (const auto open = LoginController::current()) return open;
  return LoginController::create([weakSelf = weak_from_this()] {
    if (const auto self = weakSelf.lock()) self->signedIn();
  });
}

void AppDelegate::menuSignIn() {
  VELKClient::shared().keychain().forgetRefusal();
  showLogin();
}

void AppDelegate::signedIn() {
  signInOffered_ = false;
  announce("VELK Notewick",
           "Signed in as " + VELKClient::shared().userEmail().value_or("your VELK account") + ".");
  refreshParticipants(false);
  flushOutbox();
  askToUnlockIfLocked();
}

void AppDelegate::askToUnlock() {
  signInWaits_ = signInWaits_ || VELKClient::shared().keychain().isLocked();
  VELKClient::shared().keychain().requestUnlock();
}

void AppDelegate::askToUnlockIfLocked() {
  if (VELKClient::shared().keychain().wantsUnlock()) askToUnlock();
}

void AppDelegate::followUnlocking() {
  VELKClient::shared().keychain().setUnlockObserver([weakSelf = weak_from_this()](bool opened) {
    if (const auto self = weakSelf.lock()) self->unlockAnswered(opened);
  });
}

void AppDelegate::unlockAnswered(bool opened) {
  const bool panelWaited = std::exchange(signInWaits_, false);
  if (VELKClient::shared().isSignedIn()) {
    if (opened) resumeSignIn();
  } else if (!LoginController::current() && (panelWaited || !signInOffered_)) {
    showLogin();
  }
  rebuildMenu();
}

void AppDelegate::resumeSignIn() {
  signInOffered_ = false;
  refreshParticipants(true);
  flushOutbox();
}

}  // namespace notewick
