#pragma once

#include <chrono>
#include <memory>

#include "platform/linux/titles/deadline.h"

struct wl_display;

namespace notewick {

/// A connection of its own to the Wayland compositor. Every call returns within the deadline it is
/// given. Main thread.
class WaylandConnection {
 public:
  /// Connects to the compositor that WAYLAND_DISPLAY names; null when it is not set or none answers
  /// there.
  [[nodiscard]] static std::unique_ptr<WaylandConnection> open();

  /// Handles the events that have arrived. False when the connection is broken, which it stays.
  [[nodiscard]] bool dispatch(const Deadline& deadline);

  /// Waits until the compositor has answered everything asked so far; false when it did not in
  /// time.
  [[nodiscard]] bool roundTrip(const Deadline& deadline);

  [[nodiscard]] wl_display* display() const { return display_.get(); }

 private:
  using Display = std::unique_ptr<wl_display, void (*)(wl_display*)>;

  explicit WaylandConnection(Display display);

  enum class Reading { nothing, something, broken };
  [[nodiscard]] Reading readOnce(std::chrono::milliseconds longestWait);

  Display display_;
};

}  // namespace notewick
