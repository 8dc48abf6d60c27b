#include <curl/curl.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QSysInfo>
#include <set>
#include <string>

#include "app/constants.h"
#include "doctor/desktop_findings.h"
#include "doctor/linux/checks.h"
#include "doctor/linux/turns.h"
#include "platform/linux/application.h"
#include "platform/linux/screen.h"
#include "platform/linux/secrets/secret_service.h"
#include "platform/linux/tray/tray_host.h"

namespace notewick {
namespace {

using namespace std::chrono_literals;

/// Programs join the accessibility bus, and answer on it, some turns after they were asked.
constexpr auto TITLES_PATIENCE = 4s;
/// All checks begin at once, and this one keeps no user waiting.
constexpr auto STORE_PATIENCE = 6s;
constexpr std::size_t MOST_WINDOWS = 8;

std::string valueOf(const char* variable) {
  return qEnvironmentVariable(variable).left(40).toStdString();
}

bool hasDisplay() {
  return !valueOf("DISPLAY").empty() || !valueOf("WAYLAND_DISPLAY").empty();
}

Finding lookAtVersions() {
  return aboutVersions({NOTEWICK_VERSION, std::string("Qt ") + qVersion(),
                        std::string("libcurl ") + curl_version_info(CURLVERSION_NOW)->version,
                        QSysInfo::prettyProductName().toStdString()});
}

Finding lookAtSession() {
  return aboutSession({valueOf("XDG_SESSION_TYPE"), valueOf("XDG_CURRENT_DESKTOP"), hasDisplay()});
}

std::size_t countOf(const std::optional<FrontmostApplication>& application) {
  if (!application) return 0;
  std::set<std::string> titles{application->focusedTitle.value_or("")};
  for (const auto& title : application->titles) titles.insert(title.value_or(""));
  titles.erase("");
  return titles.size();
}

Finding lookAtTitles() {
  if (!hasDisplay()) return aboutTitles({.hasDisplay = false});
  const Turns turns;
  const TitleReader reader = chooseTitleReader();
  std::size_t count = 0;
  Turns::until(
      [&] {
        if (!reader.accessibility->isTrusted()) return false;
        count = countOf(reader.screen->frontmostApplication(MOST_WINDOWS));
        return count > 0;
      },
      TITLES_PATIENCE);
  return aboutTitles({true, reader.name, reader.accessibility->isTrusted(), count});
}

Finding lookAtTray(char** argv) {
  if (!hasDisplay()) return aboutTray(TrayKind::none);
  // The session is not to know of this program, and nothing is drawn that would leave a cache.
  qunsetenv("SESSION_MANAGER");
  qputenv("QT_XCB_GL_INTEGRATION", "none");
  const QtApplication application(argv);
  const TrayHost host([] {});
  if (host.takesNotifierItems()) return aboutTray(TrayKind::notifierItems);
  return aboutTray(host.takesEmbeddedIcons() ? TrayKind::embeddedIcons : TrayKind::none);
}

bool isStartedWhenNeeded() {
  const QStringList names =
      QDBusConnection::sessionBus().interface()->activatableServiceNames().value();
  return names.contains(secret_service::NAME) || names.contains(secret_service::WALLET_NAME);
}

bool isDefaultCollectionLocked(const SecretServiceConversation& service) {
  const auto collection = service.defaultCollection().value_or(std::nullopt);
  return collection && service.isLocked(*collection).value_or(false);
}

StoreFacts storeFacts() {
  const SecretServiceConversation service(STORE_PATIENCE);
  const auto running = service.isRunning();
  if (!running) {
    const bool isMissing = running.error() == SecretServiceFailure::missing;
    return {isMissing ? StoreState::none : StoreState::silent, false};
  }
  if (!*running) return {isStartedWhenNeeded() ? StoreState::notRunning : StoreState::none, false};
  const auto items = service.search({std::string(KEYCHAIN_SERVICE), std::string(KEYCHAIN_ACCOUNT)});
  if (!items) return {StoreState::silent, false};
  if (!items->unlocked.isEmpty()) return {StoreState::open, true};
  if (!items->locked.isEmpty()) return {StoreState::locked, true};
  return {isDefaultCollectionLocked(service) ? StoreState::locked : StoreState::open, false};
}

Finding lookAtSecretStore() {
  const Turns turns;
  return aboutSecretStore(storeFacts());
}

}  // namespace

std::vector<Check> desktopChecks(char** argv) {
  return {{"versions", lookAtVersions},
          {"session", lookAtSession},
          {"titles", lookAtTitles},
          {"tray", [argv] { return lookAtTray(argv); }},
          {"password store", lookAtSecretStore}};
}

}  // namespace notewick
