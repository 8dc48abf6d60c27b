#include "platform/composition.h"

#include "platform/macos/accessibility.h"
#include "platform/macos/application.h"
#include "platform/macos/clock.h"
#include "platform/macos/http_session.h"
#include "platform/macos/main_loop.h"
#include "platform/macos/notifier.h"
#include "platform/macos/process_launcher.h"
#include "platform/macos/screen.h"
#include "platform/macos/secret_store.h"
#include "platform/macos/user_defaults.h"
#include "platform/macos/uuid_source.h"
#include "platform/macos/views.h"
#include "platform/macos/workspace.h"
#include "platform/posix/files.h"

namespace notewick {
namespace {

/// Everything that macOS does for the program.
struct MacosPlatform {
  CocoaApplication application;
  CocoaClock clock;
  CocoaMainLoop mainLoop;
  PosixFiles files;
  CocoaUserDefaults userDefaults{withoutArguments(NSUserDefaults.standardUserDefaults)};
  KeychainSecretStore secretStore{mainLoop};
  TaskLauncher launcher;
  ScriptNotifier notifier{launcher};
  CocoaWorkspace workspace;
  AccessibilityTrust accessibility;
  AccessibilityScreen screen;
  CocoaUuidSource uuids;
  CocoaViews views;
};

MacosPlatform* platform = nullptr;

}  // namespace

std::shared_ptr<void> makePlatform(char**) {
  const auto owner = std::make_shared<MacosPlatform>();
  MacosPlatform& made = *owner;
  platform = &made;
  registerPorts({
      .clock = made.clock,
      .mainLoop = made.mainLoop,
      .files = made.files,
      .userDefaults = made.userDefaults,
      .secretStore = made.secretStore,
      .notifier = made.notifier,
      .workspace = made.workspace,
      .accessibility = made.accessibility,
      .screen = made.screen,
      .uuids = made.uuids,
      .views = made.views,
      .makeHttpSession =
          [loop = &made.mainLoop](const HttpSessionConfiguration& configuration) {
            return std::make_unique<UrlSession>(configuration, *loop);
          },
  });
  return owner;
}

Application& sharedApplication() { return platform->application; }

}  // namespace notewick
