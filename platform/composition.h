#pragma once

#include <memory>

#include "platform/application.h"
#include "platform/ports.h"

namespace notewick {

/// The composition root: makes every body of this platform, once, and registers them. Cheap:
/// nothing is connected, shown or read before it is used, so that a self-test costs nothing. What
/// it gives owns them all; the process entry lets go of it last. `argv` is the process's own and
/// begins with the program's name, which is all that is looked at.
[[nodiscard]] std::shared_ptr<void> makePlatform(char** argv);

/// The shared application object, made on first use; owned by what `makePlatform` gave.
[[nodiscard]] Application& sharedApplication();

}  // namespace notewick
