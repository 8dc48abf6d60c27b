#include "tests/support/fake_files.h"

#include <algorithm>

namespace notewick {
namespace {

std::string parentOf(const std::string& path) {
  return path.substr(0, path.rfind('/'));
}

}  // namespace

bool FakeFiles::createFolders(const std::string& path) {
  trace_.push_back("create folders " + path);
  if (failWrites) return folderExists(path);
  createFoldersSilently(path);
  return true;
}

std::optional<std::string> FakeFiles::read(const std::string& path) {
  trace_.push_back("read " + path);
  return unreadable.contains(path) ? std::nullopt : contents(path);
}

std::optional<std::uint64_t> FakeFiles::size(const std::string& path) {
  const auto text = contents(path);
  return text ? std::optional<std::uint64_t>(text->size()) : std::nullopt;
}

bool FakeFiles::replaceInPlace(const std::string& path, std::string_view text) {
  trace_.push_back("replace " + path);
  if (!writable(path)) return false;
  files_[path] = text;
  return true;
}

bool FakeFiles::replaceAtomically(const std::string& path, std::string_view text) {
  trace_.push_back("replace atomically " + path);
  if (failWrites || !folderExists(parentOf(path))) return false;
  files_[path] = text;
  unreadable.erase(path);
  return true;
}

bool FakeFiles::append(const std::string& path, std::string_view text) {
  trace_.push_back("append " + path);
  if (!writable(path) || !files_.contains(path)) return false;
  files_[path] += text;
  return true;
}

bool FakeFiles::remove(const std::string& path) {
  trace_.push_back("remove " + path);
  return !failWrites && files_.erase(path) > 0;
}

std::optional<std::string> FakeFiles::contents(const std::string& path) const {
  const auto file = files_.find(path);
  return file == files_.end() ? std::nullopt : std::optional(file->second);
}

void FakeFiles::put(const std::string& path, const std::string& text) {
  createFoldersSilently(parentOf(path));
  files_[path] = text;
}

void FakeFiles::removeFolder(const std::string& path) {
  const auto inside = [&](const std::string& other) {
    return other == path || other.starts_with(path + "/");
  };
  std::erase_if(files_, [&](const auto& file) { return inside(file.first); });
  std::erase_if(folders_, inside);
}

std::vector<std::string> FakeFiles::paths() const {
  std::vector<std::string> all;
  for (const auto& [path, text] : files_) all.push_back(path);
  return all;
}

std::size_t FakeFiles::writesTo(const std::string& path) const {
  return std::size_t(std::ranges::count_if(trace_, [&](const std::string& entry) {
    return !entry.starts_with("read ") && entry.ends_with(" " + path);
  }));
}

void FakeFiles::createFoldersSilently(const std::string& path) {
  for (auto folder = path; !folder.empty(); folder = parentOf(folder)) folders_.insert(folder);
}

bool FakeFiles::writable(const std::string& path) const {
  return !failWrites && !unreadable.contains(path) && folderExists(parentOf(path));
}

}  // namespace notewick
