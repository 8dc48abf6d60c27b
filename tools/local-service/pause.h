#pragma once

#include <chrono>

namespace notewick::service {

/// A wait of the service's threads that its stopping ends at once. Waits by poll(), which programs
/// that run under a sped-up clock see shortened as everything else.
class Pause {
 public:
  /// Throws std::runtime_error when the system has no descriptor left.
  Pause();
  ~Pause();
  Pause(const Pause&) = delete;
  Pause& operator=(const Pause&) = delete;

  /// Returns after that time, or when ended. From any thread.
  void wait(std::chrono::milliseconds duration) const;

  /// Ends all waits, those to come too.
  void end() const;

 private:
  int ends_[2];  ///< of a pipe that nobody reads: it can be read from once all waits end
};

}  // namespace notewick::service
