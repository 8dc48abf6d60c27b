#pragma once

#include <functional>
#include <memory>

#include "platform/accessibility.h"
#include "platform/application.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/http_session.h"
#include "platform/main_loop.h"
#include "platform/notifier.h"
#include "platform/screen.h"
#include "platform/secret_store.h"
#include "platform/user_defaults.h"
#include "platform/uuid_source.h"
#include "platform/views.h"
#include "platform/workspace.h"

namespace notewick {

/// Everything the outside world does for the program. The composition root of a platform, or a
/// test, owns the implementations and keeps them alive while they are registered.
struct Ports {
  Clock& clock;
  MainLoop& mainLoop;
  Files& files;
  UserDefaults& userDefaults;
  SecretStore& secretStore;
  Notifier& notifier;
  Workspace& workspace;
  Accessibility& accessibility;
  Screen& screen;
  UuidSource& uuids;
  Views& views;
  std::function<std::unique_ptr<HttpSession>(const HttpSessionConfiguration&)> makeHttpSession;
};

/// Makes `ports` the ones that `ports()` gives, for the whole process. Called once, before anything
/// else; by tests once a fixture.
void registerPorts(Ports ports);

/// The registered ports; a fatal error when there are none. Main thread.
[[nodiscard]] const Ports& ports();

}  // namespace notewick
