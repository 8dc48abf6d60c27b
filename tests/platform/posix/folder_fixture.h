#pragma once

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/posix/files.h"

namespace notewick {

/// The files of this system, and a folder for them that is gone after the test.
class FolderTest : public testing::Test {
 protected:
  FolderTest() { mkdtemp(folder_.data()); }
  ~FolderTest() override { std::filesystem::remove_all(folder_); }

  [[nodiscard]] std::string path(const std::string& name) const { return folder_ + "/" + name; }

  /// Puts a file there.
  std::string contains(const std::string& name, const std::string& text) {
    std::ofstream(path(name), std::ios::binary) << text;
    return path(name);
  }

  [[nodiscard]] std::string contents(const std::string& name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  PosixFiles files_;
  std::string folder_ = testing::TempDir() + "notewick-files-XXXXXX";
};

}  // namespace notewick
