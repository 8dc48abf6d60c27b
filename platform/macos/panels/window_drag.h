#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <vector>

#include "platform/main_loop.h"

namespace notewick {

/// Whether the user is dragging a window, which must not be moved or resized under the pointer.
/// AppKit tells when a drag begins but not when it ends; that is told by the mouse button.
class WindowDrag {
 public:
  using MouseState = std::function<bool()>;

  explicit WindowDrag(NSWindow* window, MouseState mouseIsPressed = anyMouseButtonIsPressed);
  WindowDrag(const WindowDrag&) = delete;
  ~WindowDrag();

  /// Runs `action` now, or as soon as the drag is over, in the order of the calls. What has not run
  /// when this object is destroyed never does.
  void whenOver(std::function<void()> action);

 private:
  [[nodiscard]] static bool anyMouseButtonIsPressed();
  [[nodiscard]] bool isOver();
  void runWhatWaits();

  MouseState mouseIsPressed_;
  id<NSObject> observation_;
  std::shared_ptr<bool> begun_ = std::make_shared<bool>(false);
  std::vector<std::function<void()>> waiting_;
  std::unique_ptr<Timer> nextLook_;
};

}  // namespace notewick
