#include "platform/linux/clock.h"

#include <algorithm>
#include <cmath>
#include <ctime>

#include "platform/linux/time_zone_file.h"

namespace notewick {
namespace {

// From 1970-01-01 to 2001-01-01, in seconds.
constexpr double referenceDate = 978'307'200;

// The first and the last second of the years 1 and 9999 that every time zone shows inside them.
constexpr double firstSecond = -62'135'510'400;
constexpr double lastSecond = 253'402'214'399;

}  // namespace

std::chrono::duration<double> SystemClock::now() const {
  timespec time{};
  clock_gettime(CLOCK_REALTIME, &time);
  return std::chrono::duration<double>(static_cast<double>(time.tv_sec) - referenceDate +
                                       static_cast<double>(time.tv_nsec) / 1e9);
}

CivilTime SystemClock::localTime(std::chrono::duration<double> time) const {
  rereadChangedTimeZoneFile();
  tzset();
  const auto seconds = static_cast<std::time_t>(
      std::clamp(std::floor(time.count()) + referenceDate, firstSecond, lastSecond));
  std::tm local{};
  localtime_r(&seconds, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
          local.tm_hour,        local.tm_min,     local.tm_sec};
}

}  // namespace notewick
