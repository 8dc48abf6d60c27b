#pragma once

#include <functional>
#include <memory>

namespace notewick {

/// A scheduled call. Destroying the timer cancels it; a cancelled action is never run.
class Timer {
 public:
  virtual ~Timer() = default;
};

/// The one thread of control. Every action runs on the main thread, never inside the call that
/// scheduled it. Everything but `post` is called on the main thread only.
class MainLoop {
 public:
  virtual ~MainLoop() = default;

  /// Runs `action` once in a later turn of the loop. May be called from any thread.
  virtual void post(std::function<void()> action) = 0;

  /// Runs `action` once, `seconds` from now.
  [[nodiscard]] virtual std::unique_ptr<Timer> startOneShot(double seconds,
                                                            std::function<void()> action) = 0;

  /// Runs `action` every `seconds`, the first time one interval from now. A firing that comes late
  /// does not delay the later ones: the timer keeps its phase. Firings missed in a long stall, or
  /// while the machine slept, are not made up for.
  [[nodiscard]] virtual std::unique_ptr<Timer> startRepeating(double seconds,
                                                              std::function<void()> action) = 0;
};

}  // namespace notewick
