#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "tests/support/trace.h"

namespace notewick {

/// Files in memory. A file can only be made in a folder that exists. Every call by the
/// program stands in the trace: "read /a/b", "replace /a/b", "append /a/b", ...
class FakeFiles : public Files {
 public:
  FakeFiles(std::string home, Trace& trace) : home_(std::move(home)), trace_(trace) {
    makeFolders(home_);
  }

  [[nodiscard]] std::string homeFolder() const override { return home_; }
  bool createFolders(const std::string& path) override {
    trace_.push_back("create folders " + path);
    if (!failWrites) makeFolders(path);
    return folderExists(path);
  }
  [[nodiscard]] bool isFolder(const std::string& path) override { return folderExists(path); }
  void keepPrivate(const std::string& folder) override {
    trace_.push_back("keep private " + folder);
  }
  [[nodiscard]] std::optional<std::string> read(const std::string& path) override {
    trace_.push_back("read " + path);
    return unreadable.contains(path) ? std::nullopt : contents(path);
  }
  [[nodiscard]] std::optional<std::uint64_t> size(const std::string& path) override {
    const auto file = files_.find(path);
    return file == files_.end() ? std::nullopt : std::optional(file->second.size());
  }
  bool replaceInPlace(const std::string& path, std::string_view text) override {
    trace_.push_back("replace " + path);
    return !unreadable.contains(path) && write(path, std::string(text));
  }
  bool replaceAtomically(const std::string& path, std::string_view text) override {
    trace_.push_back("replace atomically " + path);
    if (!write(path, std::string(text))) return false;
    unreadable.erase(path);
    return true;
  }
  bool append(const std::string& path, std::string_view text) override {
    trace_.push_back("append " + path);
    const auto file = files_.find(path);
    if (failWrites || unreadable.contains(path) || file == files_.end()) return false;
    file->second += text;
    return true;
  }
  bool remove(const std::string& path) override {
    trace_.push_back("remove " + path);
    return !failWrites && files_.erase(path) > 0;
  }

  /// What a file holds; absent when there is none. Stands in no trace.
  [[nodiscard]] std::optional<std::string> contents(const std::string& path) const {
    const auto file = files_.find(path);
    return file == files_.end() ? std::nullopt : std::optional(file->second);
  }
  /// Puts a file there with the folders above it. Stands in no trace.
  void put(const std::string& path, const std::string& text) {
    makeFolders(parentOf(path));
    files_[path] = text;
  }
  /// Takes a folder away with everything in it, as a user might.
  void removeFolder(const std::string& path) {
    const auto inside = [&](const std::string& other) {
      return other == path || other.starts_with(path + "/");
    };
    std::erase_if(files_, [&](const auto& file) { return inside(file.first); });
    std::erase_if(folders_, inside);
  }
  [[nodiscard]] bool folderExists(const std::string& path) const { return folders_.contains(path); }
  [[nodiscard]] std::vector<std::string> paths() const {
    std::vector<std::string> all;
    for (const auto& [path, text] : files_) all.push_back(path);
    return all;
  }

  bool failWrites = false;           ///< the disk is full
  std::set<std::string> unreadable;  ///< files that are there and cannot be opened

 private:
  static std::string parentOf(const std::string& path) { return path.substr(0, path.rfind('/')); }

  void makeFolders(const std::string& path) {
    for (auto folder = path; !folder.empty(); folder = parentOf(folder)) folders_.insert(folder);
  }
  bool write(const std::string& path, const std::string& text) {
    if (failWrites || !folderExists(parentOf(path))) return false;
    files_[path] = text;
    return true;
  }

  std::string home_;
  Trace& trace_;
  std::map<std::string, std::string> files_;
  std::set<std::string> folders_;
};

}  // namespace notewick
