#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace notewick::fuzz {

/// A folder of this process in memory, gone when the process ends as it should.
class TemporaryFolder {
 public:
  TemporaryFolder() { mkdtemp(path_.data()); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }

  [[nodiscard]] const std::string& path() const { return path_; }

  /// Puts a file there, with the folders above it, in the place of what was there.
  void put(const std::string& name, std::string_view contents) const {
    const std::filesystem::path file = path_ + "/" + name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << contents;
  }

 private:
  std::string path_ = "/dev/shm/notewick-fuzz-XXXXXX";
};

}  // namespace notewick::fuzz
