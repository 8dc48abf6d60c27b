#include <algorithm>
#include <utility>

#include "app/app_delegate.h"
#include "client/base_url.h"
#include "client/velk_client.h"
#include "detect/notification.h"
#include "detect/watch_log.h"
#include "platform/ports.h"
#include "platform/web_address.h"
#include "ui/start_at_login.h"

namespace notewick {
namespace {

constexpr const char* ACCESSIBILITY_SETTINGS_URL =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";

constexpr const char* NO_CASE_NOTES =
    "Couldn't open your case notes: The service's address is not a web address.";

void writeLoginItem(const LoginItemFile& item) {
  if (item.makesFolder) ports().files.createFolders(item.folder);
  ports().files.replaceAtomically(item.folder + "/" + item.name, item.text);
}

}  // namespace

void AppDelegate::announce(const std::string& title, const std::string& body,
                           std::function<void(AppDelegate&)> clicked) {
  notify(title, body, [weakSelf = weak_from_this(), clicked = std::move(clicked)] {
    if (const auto self = weakSelf.lock()) clicked(*self);
  });
}

void AppDelegate::openAnnounced(const std::string& pendingId) {
  const bool isThere =
      std::ranges::any_of(pendings, [&](const Pending& entry) { return entry.id == pendingId; });
  if (!isThere) return logNow();
  openPending({.representedObject = pendingId});
}

void AppDelegate::openPending(const MenuItem& sender) {
  const auto pending = std::find_if(pendings.begin(), pendings.end(), [&](const Pending& entry) {
    return sender.representedObject == entry.id;
  });
  if (pending == pendings.end()) return;
  if (participants.empty()) return showLogin();
  showWidget(*pending);
}

void AppDelegate::logNow() {
  if (!participants.empty()) {
    showWidget(std::nullopt);
    widget->makeKeyAndOrderFront();
  } else if (!VELKClient::shared().isSignedIn()) {
    showLogin();
  } else {
    askToUnlockIfLocked();
    refreshParticipants(false);
  }
}

void AppDelegate::openCaseNotes() {
  const std::string url = serviceURL("/case-notes");
  if (isWebAddress(url)) return ports().workspace.openUrl(url);
  watchLog(std::string("open-error: ") + NO_CASE_NOTES);
  announce("VELK Notewick", NO_CASE_NOTES);
}

void AppDelegate::openAccessibilitySettings() {
  if (ports().accessibility.remedy() == TrustRemedy::settingsPage) {
    ports().workspace.openUrl(ACCESSIBILITY_SETTINGS_URL);
  } else {
    ports().accessibility.isTrustedWithPrompt();
  }
  announce("VELK Notewick",
           "Turn VELK Notewick ON in the Accessibility list, then quit and reopen the app.");
}

void AppDelegate::installLoginItem() {
  writeLoginItem(loginItemFile(ports().workspace, ports().files.homeFolder()));
  announce("VELK Notewick", "Will start automatically at login.");
}

}  // namespace notewick
