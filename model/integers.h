#pragma once

#include <cstdint>
#include <limits>

namespace notewick {

/// `left + right`, or the nearest value that fits: counts read from files can be anything.
[[nodiscard]] inline std::int64_t saturatingSum(std::int64_t left, std::int64_t right) {
  std::int64_t sum;
  if (!__builtin_add_overflow(left, right, &sum)) return sum;
  using Limits = std::numeric_limits<std::int64_t>;
  return left < 0 ? Limits::min() : Limits::max();
}

}  // namespace notewick
