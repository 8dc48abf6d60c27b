#pragma once

#include <chrono>
#include <cmath>

#include "model/date.h"
#include "platform/clock.h"

namespace notewick {

/// The logical time of a test. It moves only when a test moves it, through `FakeMainLoop`, or sets
/// it here: then no timer becomes due by it, as when the user corrects the clock or the machine is
/// suspended, during which a Linux machine's timers stand still.
class FakeClock : public Clock {
 public:
  [[nodiscard]] Date now() const override { return uptime_ + start_; }
  [[nodiscard]] CivilTime localTime(Date time) const override {
    using namespace std::chrono;
    const auto local = REFERENCE_DAY + seconds(std::llround(std::floor((time + offset_).count())));
    const auto midnight = floor<days>(local);
    const year_month_day day(midnight);
    const hh_mm_ss clock(local - midnight);
    return {int(day.year()),
            int(unsigned(day.month())),
            int(unsigned(day.day())),
            int(clock.hours().count()),
            int(clock.minutes().count()),
            int(clock.seconds().count())};
  }

  void set(Date now) { start_ = now - uptime_; }
  /// Sets the time to what the wall clock shows in the zone of this moment.
  void setLocal(const CivilTime& time) { set(dateOf(time)); }
  /// The clock is set, or the machine was suspended.
  void jump(double seconds) { start_ += Date(seconds); }
  /// The user travels: from now on wall clocks are so many hours ahead of UTC.
  void setZone(double hoursAheadOfUtc) { offset_ = Date(hoursAheadOfUtc * 3600); }

  /// The point in time at which the wall clock shows `local` in the zone of this moment.
  [[nodiscard]] Date dateOf(const CivilTime& local) const {
    using namespace std::chrono;
    const auto day = sys_days(year(local.year) / local.month / local.day);
    return Date(day - REFERENCE_DAY + hours(local.hour) + minutes(local.minute) +
                seconds(local.second)) -
           offset_;
  }

  /// What timers count by: it never goes back, and never jumps.
  [[nodiscard]] Date uptime() const { return uptime_; }
  void runTo(Date uptime) { uptime_ = uptime; }

 private:
  static constexpr std::chrono::sys_days REFERENCE_DAY{std::chrono::January / 1 / 2001};

  /// As large as dates are, so that it has their grid: 19 and 1 ms make up 20 ms.
  Date uptime_{736'000'000};
  Date start_{0};  ///< what the clock would have shown at the uptime 0
  Date offset_{0};
};

}  // namespace notewick
