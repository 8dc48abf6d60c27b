#pragma once

#include <functional>
#include <memory>

#include "platform/main_loop.h"

namespace notewick {

/// Starts a timer of the main run loop, which fires in its common modes: also while a menu is open
/// or a window is dragged. It ends when the result is destroyed, which `action` itself may do.
[[nodiscard]] std::unique_ptr<Timer> startRunLoopTimer(double seconds, bool repeats,
                                                       std::function<void()> action);

}  // namespace notewick
