#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace notewick {

/// The frontmost application as one sample found it. Texts are as the desktop holds them; they need
/// not be valid UTF-8.
struct FrontmostApplication {
  std::optional<std::string> name;  ///< the name the user knows it by; absent when it has none
  /// The title of the window with the focus; absent when there is none or the read failed.
  std::optional<std::string> focusedTitle;
  /// The titles of its first windows, frontmost first where the system tells their order; empty
  /// when the list could not be read. Absent where a title could not be read or is no text: that
  /// window still counts among the first.
  std::vector<std::optional<std::string>> titles;
};

/// What the user looks at. Main thread, synchronous.
class Screen {
 public:
  virtual ~Screen() = default;

  /// The application in front, with the titles of at most `mostWindows` of its windows, never one
  /// of another program; absent when no application is frontmost. Takes at most 0.25 s: what is not
  /// read by then counts as failed.
  [[nodiscard]] virtual std::optional<FrontmostApplication> frontmostApplication(
      std::size_t mostWindows) = 0;
};

}  // namespace notewick
