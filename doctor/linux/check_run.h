#pragma once

#include <chrono>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "doctor/finding.h"

namespace notewick {

struct Check {
  std::string name;
  std::function<Finding()> look;
};

/// Carries out all checks at once, each in a process of its own, and prints a line for each in the
/// order given. A check may hang in any call, crash or end its process: then its line says so, and
/// the others are not disturbed. Nothing that a check prints or starts is left. Takes `patience` at
/// most. Gives whether all is well. The process must have one thread.
[[nodiscard]] bool runChecks(const std::vector<Check>& checks, std::chrono::milliseconds patience,
                             std::ostream& out);

}  // namespace notewick
