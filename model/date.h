#pragma once

#include <chrono>

namespace notewick {

/// A point in time, or a span of it: seconds with fractions. Points count from 2001-01-01 00:00:00
/// UTC. A double, so that a date read from a file is written back to the last bit.
using Date = std::chrono::duration<double>;

/// Seconds between 1970-01-01 and 2001-01-01, both at 00:00:00 UTC.
inline constexpr double SECONDS_FROM_1970_TO_2001 = 978307200.0;

}  // namespace notewick
