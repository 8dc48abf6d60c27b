#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/files.h"
#include "tests/support/trace.h"

namespace notewick {

/// Files in memory. A file can only be made in a folder that exists. Every call by the
/// program stands in the trace: "read /a/b", "replace /a/b", "append /a/b", ...
class FakeFiles : public Files {
 public:
  FakeFiles(std::string home, Trace& trace) : home_(std::move(home)), trace_(trace) {
    createFoldersSilently(home_);
  }

  [[nodiscard]] std::string homeFolder() const override { return home_; }
  bool createFolders(const std::string& path) override;
  [[nodiscard]] bool isFolder(const std::string& path) override { return folderExists(path); }
  void keepPrivate(const std::string& folder) override {
    trace_.push_back("keep private " + folder);
  }
  [[nodiscard]] std::optional<std::string> read(const std::string& path) override;
  [[nodiscard]] std::optional<std::uint64_t> size(const std::string& path) override;
  bool replaceInPlace(const std::string& path, std::string_view text) override;
  bool replaceAtomically(const std::string& path, std::string_view text) override;
  bool append(const std::string& path, std::string_view text) override;
  bool remove(const std::string& path) override;

  /// What a file holds; absent when there is none. Stands in no trace.
  [[nodiscard]] std::optional<std::string> contents(const std::string& path) const;
  /// Puts a file there with the folders above it. Stands in no trace.
  void put(const std::string& path, const std::string& text);
  /// Takes a folder away with everything in it, as a user might.
  void removeFolder(const std::string& path);
  [[nodiscard]] bool folderExists(const std::string& path) const { return folders_.contains(path); }
  [[nodiscard]] std::vector<std::string> paths() const;
  /// How many calls changed or tried to change this file.
  [[nodiscard]] std::size_t writesTo(const std::string& path) const;

  bool failWrites = false;           ///< the disk is full
  std::set<std::string> unreadable;  ///< files that are there and cannot be opened

 private:
  void createFoldersSilently(const std::string& path);
  [[nodiscard]] bool writable(const std::string& path) const;

  std::string home_;
  Trace& trace_;
  std::map<std::string, std::string> files_;
  std::set<std::string> folders_;
};

}  // namespace notewick
