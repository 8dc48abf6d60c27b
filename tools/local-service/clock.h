#pragma once

#include <chrono>
#include <functional>

namespace notewick::service {

/// An instant as the service reckons: milliseconds since 1970-01-01 UTC.
using Time = std::chrono::sys_time<std::chrono::milliseconds>;

/// Tells the present instant. Called from any thread. Decides expiry and dates notes; never a wait.
using Clock = std::function<Time()>;

[[nodiscard]] inline Time systemTime() {
  return std::chrono::time_point_cast<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

}  // namespace notewick::service
