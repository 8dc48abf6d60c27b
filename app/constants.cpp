#include "app/constants.h"

namespace notewick {

std::string SUPPORT_DIR;
std::string WATCH_LOG;

void setConstants(const std::string& homeFolder) {
  SUPPORT_DIR = homeFolder + "/Library/Application Support/VELKNotewick";
  WATCH_LOG = SUPPORT_DIR + "/watch.log";
}

}  // namespace notewick
