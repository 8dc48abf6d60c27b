#pragma once

#include <memory>

#include "platform/application.h"
#include "platform/ports.h"

namespace notewick {

/// The composition root: makes every implementation of this platform, once, and registers
/// them. Cheap: nothing is connected, shown or read before it is used, so that a self-test costs
/// nothing. The result owns them all; the process entry releases it last. `argv` is the process's
/// own; only its first entry, the program's name, is used.
[[nodiscard]] std::shared_ptr<void> makePlatform(char** argv);

/// The shared application object, made on first use; owned by the result of `makePlatform`.
[[nodiscard]] Application& sharedApplication();

}  // namespace notewick
