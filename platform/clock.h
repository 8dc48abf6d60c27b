#pragma once

#include <chrono>

namespace notewick {

/// A point in time as the user's wall clock and calendar show it (Gregorian, 24 hours).
struct CivilTime {
  int year;
  int month;  ///< 1 to 12
  int day;    ///< 1 to 31
  int hour;   ///< 0 to 23
  int minute;
  int second;
};

/// Time is a port: portable code never reads a clock, so that tests can move it.
/// Points in time are seconds since 2001-01-01 00:00:00 UTC, with fractions.
class Clock {
 public:
  virtual ~Clock() = default;

  /// The current time. Never fails.
  [[nodiscard]] virtual std::chrono::duration<double> now() const = 0;

  /// The given time in the user's time zone as it is set now, also when it changed while the
  /// program runs.
  [[nodiscard]] virtual CivilTime localTime(std::chrono::duration<double> time) const = 0;
};

}  // namespace notewick
