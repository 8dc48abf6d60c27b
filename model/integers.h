#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace notewick {

/// `left + right`, or the nearest value that fits: counts read from files can be anything.
[[nodiscard]] inline std::int64_t saturatingSum(std::int64_t left, std::int64_t right) {
  std::int64_t sum;
  if (!__builtin_add_overflow(left, right, &sum)) return sum;
  using Limits = std::numeric_limits<std::int64_t>;
  return left < 0 ? Limits::min() : Limits::max();
}

/// The value of a JSON number, given by its text, if it is a whole number that fits: 12, 12.0,
/// 1.2e1 and 120e-1 are all 12. Every digit counts, which a double would round.
[[nodiscard]] std::optional<std::int64_t> wholeNumberIn(std::string_view number);

}  // namespace notewick
