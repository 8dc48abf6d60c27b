#include "platform/composition.h"

#include "detect/notification.h"
#include "platform/macos/accessibility.h"
#include "platform/macos/application.h"
#include "platform/macos/clock.h"
#include "platform/macos/http_session.h"
#include "platform/macos/main_loop.h"
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

struct Platform {
  CocoaClock clock;
  CocoaMainLoop mainLoop;
  PosixFiles files;
  CocoaUserDefaults userDefaults{NSUserDefaults.standardUserDefaults};
  KeychainSecretStore secretStore{mainLoop};
  TaskLauncher launcher;
  ScriptNotifier notifier{launcher};
  CocoaWorkspace workspace;
  AccessibilityTrust accessibility;
  AccessibilityScreen screen;
  CocoaUuidSource uuids;
  CocoaViews views;
};

}  // namespace

std::shared_ptr<void> makePlatform(int&, char**) {
  const auto owner = std::make_shared<Platform>();
  Platform& platform = *owner;
  registerPorts({platform.clock, platform.mainLoop, platform.files, platform.userDefaults,
                 platform.secretStore, platform.notifier, platform.workspace,
                 platform.accessibility, platform.screen, platform.uuids, platform.views,
                 [&loop = platform.mainLoop](const HttpSessionConfiguration& configuration) {
                   return std::make_unique<UrlSession>(configuration, loop);
                 }});
  return owner;
}

Application& sharedApplication() {
  static CocoaApplication application;
  return application;
}

}  // namespace notewick
