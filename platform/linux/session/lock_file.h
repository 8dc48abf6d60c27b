#pragma once

#include <string>

namespace notewick {

/// A file that one process at a time can hold. The system lets go of it when the process ends,
/// however that happens, so that a lock never outlives its holder.
class LockFile {
 public:
  explicit LockFile(std::string path) : path_(std::move(path)) {}
  LockFile(const LockFile&) = delete;
  LockFile& operator=(const LockFile&) = delete;
  ~LockFile();

  /// False when another process holds it. True also where no such file can be made.
  [[nodiscard]] bool claim();

 private:
  std::string path_;
  int descriptor_ = -1;
};

}  // namespace notewick
