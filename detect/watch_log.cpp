#include "detect/watch_log.h"

#include "app/constants.h"
#include "detect/stamps.h"
#include "platform/ports.h"

namespace notewick {
namespace {

constexpr std::uint64_t LARGEST_LOG = 500'000;

}  // namespace

void ensureDirs() {
  ports().files.createFolders(SUPPORT_DIR);
  ports().files.keepPrivate(SUPPORT_DIR);
}

void appendLine(const std::string& line, const std::string& path) {
  Files& files = ports().files;
  if (files.size(path)) {
    files.append(path, line + "\n");
  } else {
    files.replaceAtomically(path, line + "\n");
  }
}

void watchLog(const std::string& message) {
  Files& files = ports().files;
  if (files.size(WATCH_LOG).value_or(0) > LARGEST_LOG) files.remove(WATCH_LOG);
  appendLine(secondStamp() + " " + message, WATCH_LOG);
}

}  // namespace notewick
