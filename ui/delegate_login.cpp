#include "app/app_delegate.h"
#include "client/velk_client.h"
#include "detect/notification.h"
#include "ui/login_controller.h"

namespace notewick {

void AppDelegate::showLogin() {
  auto controller = LoginController::current();
  if (!controller && VELKClient::shared().keychain().isLocked()) return askToUnlock();
  if (!controller) {
    controller = LoginController::create([weakSelf = weak_from_this()] {
      if (const auto self = weakSelf.lock()) self->signedIn();
    });
  }
  controller->show();
}

void AppDelegate::askToSignIn() {
  if (const auto open = LoginController::current()) return open->remind();
  showLogin();
}

void AppDelegate::menuSignIn() {
  VELKClient::shared().keychain().forgetRefusal();
  showLogin();
}

void AppDelegate::signedIn() {
  notify("VELK Notewick",
         "Signed in as " + VELKClient::shared().userEmail().value_or("your VELK account") + ".");
  refreshParticipants(false);
  flushOutbox();
  askToUnlockIfLocked();
}

void AppDelegate::askToUnlock() {
  VELKClient::shared().keychain().requestUnlock([weakSelf = weak_from_this()](bool opened) {
    const auto self = weakSelf.lock();
    if (!self) return;
    if (opened) {
      self->resumeSignIn();
    } else if (!VELKClient::shared().isSignedIn()) {
      self->showLogin();
    }
    self->rebuildMenu();
  });
}

void AppDelegate::askToUnlockIfLocked() {
  if (VELKClient::shared().keychain().wantsUnlock()) askToUnlock();
}

void AppDelegate::resumeSignIn() {
  refreshParticipants(true);
  flushOutbox();
}

}  // namespace notewick
