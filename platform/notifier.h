#pragma once

#include <string>

namespace notewick {

/// Desktop notifications. Main thread; returns at once; a failure is swallowed.
class Notifier {
 public:
  virtual ~Notifier() = default;

  /// Shows the texts as they stand: what a desktop would take for markup is shown, not rendered.
  virtual void show(const std::string& title, const std::string& body) = 0;
};

}  // namespace notewick
