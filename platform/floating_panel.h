#pragma once

namespace notewick {

/// A small window that stays above ordinary windows, on every desktop. Main thread. It is hidden
/// until it is ordered front, and survives being closed by the user.
class FloatingPanel {
 public:
  virtual ~FloatingPanel() = default;

  /// Shows the panel above the others without activating the program; a panel that has the keyboard
  /// keeps it.
  virtual void orderFrontRegardless() = 0;

  /// Shows the panel and gives it the keyboard.
  virtual void makeKeyAndOrderFront() = 0;

  /// Hides the panel. This is not a close, so its delegate is not called.
  virtual void orderOut() = 0;
};

}  // namespace notewick
