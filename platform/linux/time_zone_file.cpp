#include "platform/linux/time_zone_file.h"

#include <sys/stat.h>

#include <QByteArray>
#include <ctime>
#include <string>
#include <tuple>

namespace notewick {
namespace {

// What tells a changed file: a new file under the name, or other contents in the same.
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

}  // namespace

void rereadChangedTimeZoneFile() {
  static FileStamp lastStamp;
  const QByteArray zone = qgetenv("TZ");
  if (zone.isEmpty()) return;
  FileStamp stamp = stampOf(zoneFilePath(zone.toStdString()));
  if (stamp == lastStamp) return;
  lastStamp = std::move(stamp);
  forgetZone(zone);
}

}  // namespace notewick
