#include "platform/fatal_error.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace notewick {

void fatalError(std::string_view message) {
  std::string line(message);
  std::ranges::replace_if(
      line, [](unsigned char character) { return character < ' '; }, ' ');
  std::fputs(("notewick: " + line + "\n").c_str(), stderr);
  std::_Exit(EXIT_FAILURE);
}

}  // namespace notewick
