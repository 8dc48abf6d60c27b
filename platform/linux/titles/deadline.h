#pragma once

#include <algorithm>
#include <chrono>

namespace notewick {

/// The end of the time that one sample may take, however many reads it needs.
class Deadline {
 public:
  explicit Deadline(std::chrono::milliseconds limit)
      : end_(std::chrono::steady_clock::now() + limit) {}

  /// What is left, rounded up, so that waiting this long reaches the end; zero when it is over.
  [[nodiscard]] std::chrono::milliseconds remaining() const {
    const auto left = end_ - std::chrono::steady_clock::now();
    return std::max(std::chrono::ceil<std::chrono::milliseconds>(left),
                    std::chrono::milliseconds::zero());
  }

  [[nodiscard]] bool isOver() const { return remaining() == std::chrono::milliseconds::zero(); }

 private:
  std::chrono::steady_clock::time_point end_;
};

/// The longest that the reads of one sample may take together (platform/screen.h).
inline constexpr std::chrono::milliseconds SAMPLE_LIMIT{250};

}  // namespace notewick
