#include "platform/composition.h"

#include <memory>

#include "platform/linux/application.h"
#include "platform/linux/clock.h"
#include "platform/linux/controls/colour_scheme.h"
#include "platform/linux/http_session.h"
#include "platform/linux/main_loop.h"
#include "platform/linux/notifier.h"
#include "platform/linux/screen.h"
#include "platform/linux/secret_store.h"
#include "platform/linux/session/core_limit.h"
#include "platform/linux/session/large_memory.h"
#include "platform/linux/user_defaults.h"
#include "platform/linux/uuid_source.h"
#include "platform/linux/views.h"
#include "platform/linux/workspace.h"
#include "platform/posix/files.h"

namespace notewick {
namespace {

/// Everything that the Linux desktop does for the program. The application object comes first, and
/// goes last: the others may hold what belongs to it.
struct LinuxPlatform {
  explicit LinuxPlatform(char** arguments) : argv(arguments) {}

  char** argv;
  std::unique_ptr<QtApplication> application;
  std::unique_ptr<ColourScheme> colours;
  SystemClock clock;
  QtMainLoop mainLoop;
  PosixFiles files;
  SettingsUserDefaults userDefaults;
  SecretServiceStore secretStore;
  DBusNotifier notifier;
  DesktopWorkspace workspace;
  DesktopScreen screen;
  RandomUuidSource uuids;
  QtViews views{userDefaults};
};

LinuxPlatform* platform = nullptr;

}  // namespace

std::shared_ptr<void> makePlatform(char** argv) {
  refuseCores();
  returnLargeMemory();
  const auto owner = std::make_shared<LinuxPlatform>(argv);
  LinuxPlatform& made = *owner;
  platform = &made;
  registerPorts({
      .clock = made.clock,
      .mainLoop = made.mainLoop,
      .files = made.files,
      .userDefaults = made.userDefaults,
      .secretStore = made.secretStore,
      .notifier = made.notifier,
      .workspace = made.workspace,
      .accessibility = made.screen,
      .screen = made.screen,
      .uuids = made.uuids,
      .views = made.views,
      .makeHttpSession =
          [](const HttpSessionConfiguration& configuration) {
            return std::make_unique<CurlHttpSession>(configuration);
          },
  });
  return owner;
}

Application& sharedApplication() {
  auto& application = platform->application;
  if (!application) {
    application = std::make_unique<QtApplication>(platform->argv);
    platform->colours = std::make_unique<ColourScheme>();
    SettingsUserDefaults::keepFilePrivate();
  }
  return *application;
}

}  // namespace notewick
