#include "platform/fatal_error.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace notewick {

void fatalError(std::string_view message) {
  const std::string line = "notewick: " + std::string(message) + "\n";
  std::fputs(line.c_str(), stderr);
  std::_Exit(EXIT_FAILURE);
}

}  // namespace notewick
