#pragma once

#include <string_view>

namespace notewick {

/// Writes one line to standard error, with a blank for each control character in the message, and
/// ends the process with a failure. For faults of configuration and for states that cannot be; what
/// can happen to a user is never fatal.
[[noreturn]] void fatalError(std::string_view message);

/// `left + right`; a fatal error when it does not fit.
template <class Integer>
[[nodiscard]] Integer checkedSum(Integer left, Integer right) {
  Integer sum;
  if (__builtin_add_overflow(left, right, &sum)) fatalError("a count is beyond 64 bits");
  return sum;
}

}  // namespace notewick
