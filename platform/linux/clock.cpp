#include "platform/linux/clock.h"

#include <sys/stat.h>

#include <QByteArray>
#include <algorithm>
#include <cmath>
#include <ctime>
#include <string>
#include <tuple>

namespace notewick {
namespace {

// From 1970-01-01 to 2001-01-01, in seconds.
constexpr double REFERENCE_DATE = 978'307'200;

// The first and the last second of the years 1 and 9999 that every time zone shows inside them.
constexpr double FIRST_SECOND = -62'135'510'400;
constexpr double LAST_SECOND = 253'402'214'399;

// Differs when there is a new file under the name, or other contents in the same file.
using FileStamp = std::tuple<std::string, dev_t, ino_t, off_t, std::time_t, long>;

std::string zoneFilePath(std::string zone) {
  if (zone.starts_with(':')) zone.erase(0, 1);
  return zone.starts_with('/') ? zone : "/usr/share/zoneinfo/" + zone;
}

FileStamp stampOf(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return {path, 0, 0, 0, 0, 0};
  return {path,           status.st_dev,         status.st_ino,
          status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

// The C library reads a zone only when the text of TZ differs from the last one it saw.
void forgetZone(const QByteArray& zone) {
  qputenv("TZ", "UTC0");
  tzset();
  qputenv("TZ", zone);
}

/// Makes the C library read the time zone file that TZ names again if it changed since the last
/// call; without TZ the library sees to that itself.
void rereadChangedTimeZoneFile() {
  static FileStamp lastStamp;
  const QByteArray zone = qgetenv("TZ");
  if (zone.isEmpty()) return;
  FileStamp stamp = stampOf(zoneFilePath(zone.toStdString()));
  if (stamp == lastStamp) return;
  lastStamp = std::move(stamp);
  forgetZone(zone);
}

}  // namespace

std::chrono::duration<double> SystemClock::now() const {
  timespec time{};
  clock_gettime(CLOCK_REALTIME, &time);
  return std::chrono::duration<double>(static_cast<double>(time.tv_sec) - REFERENCE_DATE +
                                       static_cast<double>(time.tv_nsec) / 1e9);
}

CivilTime SystemClock::localTime(std::chrono::duration<double> time) const {
  rereadChangedTimeZoneFile();
  tzset();
  const auto seconds = static_cast<std::time_t>(
      std::clamp(std::floor(time.count()) + REFERENCE_DATE, FIRST_SECOND, LAST_SECOND));
  std::tm local{};
  localtime_r(&seconds, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
          local.tm_hour,        local.tm_min,     local.tm_sec};
}

}  // namespace notewick
