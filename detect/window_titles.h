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

/// The titles of the frontmost application's focused window and of the first eight of its windows,
/// in that order, as valid UTF-8 and up to the first NUL. A read that failed is skipped. Absent
/// only when no application is frontmost. Main thread.
[[nodiscard]] std::optional<FrontmostTitles> frontmostWindowTitles();

}  // namespace notewick
