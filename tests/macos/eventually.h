#pragma once

#include <functional>

namespace notewick {

/// Runs the main run loop until `holds` does; false when it does not within 20 seconds.
[[nodiscard]] bool eventually(const std::function<bool()>& holds);

/// Runs what is due on the main run loop now: for what must not happen.
void runLoopOnce();

}  // namespace notewick
