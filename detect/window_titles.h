#pragma once

#include <optional>
#include <string>
#include <vector>

namespace notewick {

/// What the user is looking at.
struct FrontmostTitles {
  std::string app;                  ///< "?" when the application has no name
  std::vector<std::string> titles;  ///< none empty, no two equal, in reading order, at most 9
};

/// Reads the frontmost application's focused window, then the first eight of its windows. A read
/// that fails is skipped. Absent only when no application is frontmost. Main thread; at most 11
/// attribute reads.
[[nodiscard]] std::optional<FrontmostTitles> frontmostWindowTitles();

}  // namespace notewick
