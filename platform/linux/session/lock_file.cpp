#include "platform/linux/session/lock_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace notewick {

LockFile::~LockFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

bool LockFile::claim() {
  descriptor_ = open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
  return descriptor_ < 0 || flock(descriptor_, LOCK_EX | LOCK_NB) == 0;
}

}  // namespace notewick
