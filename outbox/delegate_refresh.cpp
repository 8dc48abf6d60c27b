#include "app/app_delegate.h"
#include "client/velk_client.h"
#include "detect/watch_log.h"
#include "model/local_store.h"
#include "platform/ports.h"

namespace notewick {

void AppDelegate::refreshParticipants(bool silent) {
  VELKClient::shared().fetchParticipants(
      [weakSelf = weak_from_this(), silent](Result<std::vector<Participant>> result) {
        if (const auto self = weakSelf.lock()) {
          self->participantsArrived(std::move(result), silent);
        }
      });
}

void AppDelegate::participantsArrived(Result<std::vector<Participant>> result, bool silent) {
  if (!result) return handleApiFailure(result.error(), "Couldn't load participants");
  setParticipants(std::move(*result));
  saveJSON(ports().files, participantsCache(), participants);
  rebuildMenu();
  if (widgetVisible()) {
    showWidget(std::nullopt);
  } else {
    refreshWidget();
  }
  if (silent) return;
  announce("VELK Notewick",
           "Watching for work on " + std::to_string(participants.size()) + " participants.");
}

void AppDelegate::handleApiFailure(const VELKError& error, const std::string& context) {
  if (error.needsSignIn()) {
    askToSignIn();
  } else {
    const std::string text = context + ": " + error.message();
    watchLog("api-error: " + text);
    if (!error.isRetryable()) announce("VELK Notewick", text);
  }
  rebuildMenu();
}

void AppDelegate::menuSignOut() {
  VELKClient::shared().keychain().forgetRefusal();
  VELKClient::shared().signOut();
  setParticipants({});
  saveJSON(ports().files, participantsCache(), participants);
  if (widget) widget->orderOut();
  rebuildMenu();
  showLogin();
  askToUnlockIfLocked();
}

void AppDelegate::setParticipants(std::vector<Participant> list) {
  participants = std::move(list);
  matcher_ = NameMatcher(participants);
}

}  // namespace notewick
