#pragma once

#include <functional>
#include <string>

namespace notewick {

/// Desktop notifications. Main thread; returns at once; a failure is swallowed.
class Notifier {
 public:
  virtual ~Notifier() = default;

  /// Shows the texts as they stand: what a desktop would take for markup is shown, not rendered.
  /// `clicked`, which may be empty, is called in a later turn and at most once, when the user
  /// clicks the notification. Where the system does not tell of clicks it is never called.
  virtual void show(const std::string& title, const std::string& body,
                    std::function<void()> clicked) = 0;
};

}  // namespace notewick
