#pragma once

#include <string>
#include <vector>

namespace notewick {

/// What the program did to its world, one line each, in order. The fakes of one world share it, so
/// that a test sees what came before what.
using Trace = std::vector<std::string>;

}  // namespace notewick
