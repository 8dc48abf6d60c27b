#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace notewick {

/// One window of another program, as an accessibility element. It may vanish between two reads: a
/// read then fails.
class ScreenWindow {
 public:
  virtual ~ScreenWindow() = default;

  /// The title, valid UTF-8, possibly empty; absent when the read failed, ran over its time, or the
  /// value is no text.
  [[nodiscard]] virtual std::optional<std::string> title() = 0;
};

/// How many windows of an application are read: the first ones of its list, whether or not their
/// titles can be read.
inline constexpr std::size_t MOST_WINDOWS = 8;

/// The application that was frontmost when it was asked for. Each call below is one attribute read.
class ScreenApplication {
 public:
  virtual ~ScreenApplication() = default;

  /// The name the user knows it by, valid UTF-8; absent when it has none.
  [[nodiscard]] virtual std::optional<std::string> localizedName() = 0;

  /// The window with the focus; null when the read failed or there is none.
  [[nodiscard]] virtual std::unique_ptr<ScreenWindow> focusedWindow() = 0;

  /// Its windows, frontmost first where the system tells their order, never one of another program;
  /// empty when the read failed. Those after the first `MOST_WINDOWS` may be left out.
  [[nodiscard]] virtual std::vector<std::unique_ptr<ScreenWindow>> windows() = 0;
};

/// What the user looks at. Main thread, synchronous. All reads that start from one
/// `frontmostApplication` together take at most 0.25 s: after one read has run over, the others
/// fail at once.
class Screen {
 public:
  virtual ~Screen() = default;

  /// Null when no application is frontmost.
  [[nodiscard]] virtual std::unique_ptr<ScreenApplication> frontmostApplication() = 0;
};

}  // namespace notewick
