#include "tests/support/fake_clock.h"

#include <cmath>

namespace notewick {
namespace {

namespace chrono = std::chrono;

constexpr chrono::sys_days REFERENCE_DAY = chrono::sys_days(chrono::year(2001) / 1 / 1);

}  // namespace

CivilTime FakeClock::localTime(Date time) const {
  const auto seconds = chrono::seconds(std::llround(std::floor((time + offset_).count())));
  const auto local = REFERENCE_DAY + seconds;
  const auto midnight = chrono::floor<chrono::days>(local);
  const chrono::year_month_day day(midnight);
  const chrono::hh_mm_ss clock(local - midnight);
  return {int(day.year()),
          int(unsigned(day.month())),
          int(unsigned(day.day())),
          int(clock.hours().count()),
          int(clock.minutes().count()),
          int(clock.seconds().count())};
}

Date FakeClock::dateOf(const CivilTime& local) const {
  const auto day = chrono::year(local.year) / local.month / local.day;
  const auto days = chrono::sys_days(day) - REFERENCE_DAY;
  const auto time = days + chrono::hours(local.hour) + chrono::minutes(local.minute) +
                    chrono::seconds(local.second);
  return Date(time) - offset_;
}

}  // namespace notewick
