#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/titles/application_names.h"
#include "platform/linux/x11/x11_connection.h"
#include "platform/linux/x11/x11_window_identity.h"
#include "platform/screen.h"

namespace notewick {

/// What is on screen in an X11 session, from the properties that the window manager and the
/// programs keep there (freedesktop Extended Window Manager Hints; ICCCM 4.1.2). They live in the X
/// server, so a program that has stopped answering is read like any other. Three round trips a
/// sample, and more where a title is longer than 64 KiB; the titles of other programs are never
/// read. Without a window manager nothing is frontmost.
class X11Screen final : public Screen {
 public:
  /// A sample takes `limit` at most.
  explicit X11Screen(std::unique_ptr<X11Connection> connection,
                     std::chrono::milliseconds limit = SAMPLE_LIMIT);

  [[nodiscard]] std::optional<FrontmostApplication> frontmostApplication(
      std::size_t mostWindows) override;

 private:
  using Window = std::uint32_t;

  struct Desktop {
    Window active = 0;
    std::vector<Window> windows;  ///< topmost first
    Window managerCheck = 0;      ///< a window that lives as long as the window manager
  };

  [[nodiscard]] std::optional<Desktop> readDesktop(const Deadline& deadline);

  /// The windows of the active window's application, topmost first, and its name; absent when the
  /// active window or the window manager is gone.
  struct Application {
    std::string wmClass;
    std::vector<Window> windows;
  };
  [[nodiscard]] std::optional<Application> readApplication(const Desktop& desktop,
                                                           std::size_t mostWindows,
                                                           const Deadline& deadline);

  [[nodiscard]] std::vector<std::optional<std::string>> readTitles(
      const std::vector<Window>& windows, const Deadline& deadline);

  [[nodiscard]] std::optional<std::string> nameOf(const Application& application);

  std::unique_ptr<X11Connection> connection_;
  std::chrono::milliseconds limit_;
  ApplicationNames names_;
};

}  // namespace notewick
