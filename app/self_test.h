#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace notewick {

/// Whether exactly "--selftest" is among the arguments.
[[nodiscard]] bool wantsSelfTest(const std::vector<std::string>& arguments);

/// Runs the name matcher over built-in sample window titles and prints what it recognises, one
/// title a line, then the base URL in force. Touches no file and no user interface.
void runSelfTest(std::ostream& out);

}  // namespace notewick
