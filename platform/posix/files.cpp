#include "platform/posix/files.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "platform/posix/open_file.h"

namespace notewick {
namespace {

namespace fs = std::filesystem;

constexpr mode_t OWNER_ONLY_FOLDER = 0700;
constexpr mode_t RIGHTS_OF_OTHERS = S_IRWXG | S_IRWXO;
constexpr std::uint64_t LARGEST_FILE = std::uint64_t{64} * 1024 * 1024;

std::string homeFromPasswordDatabase() {
  const passwd* const user = getpwuid(getuid());
  return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "";
}

void takeRightsOfOthers(const fs::path& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || (status.st_mode & RIGHTS_OF_OTHERS) == 0) return;
  chmod(path.c_str(), status.st_mode & S_IRWXU);
}

/// Opens a file that names clients, which nobody else is to read.
OpenFile openOwn(const std::string& path, int flags) {
  OpenFile file(path, flags);
  if (!file.isOpen()) return file;
  file.takeRightsOfOthers();
  takeRightsOfOthers(fs::path(path).parent_path());
  return file;
}

bool reserve(const OpenFile& file, std::uint64_t size) {
  if (size <= file.size()) return true;
  return file.write(std::string(size - file.size(), ' '), file.size());
}

/// The size to write a text of `size` bytes in, so that nothing of the old text is left behind it:
/// whole pages where the disk has room for them. Absent, with the file as it was, when it has no
/// room for the text. A file too large to be read holds nothing that could be left.
std::optional<std::uint64_t> reservedSize(const OpenFile& file, std::uint64_t size) {
  const std::uint64_t least = file.size() > LARGEST_FILE ? size : std::max(size, file.size());
  for (const std::uint64_t wanted : {OpenFile::wholePages(least), least}) {
    if (reserve(file, wanted)) return wanted;
    (void)file.truncate(file.size());
  }
  return std::nullopt;
}

std::string padded(std::string_view text, std::uint64_t size) {
  std::string contents(text);
  contents.resize(size, ' ');
  return contents;
}

}  // namespace

std::string PosixFiles::homeFolder() const {
  const char* const fromEnvironment = std::getenv("HOME");
  std::string home = fromEnvironment != nullptr ? fromEnvironment : "";
  if (!home.starts_with('/')) home = homeFromPasswordDatabase();
  while (home.ends_with('/')) home.pop_back();
  return home;
}

bool PosixFiles::createFolders(const std::string& path) {
  for (std::size_t slash = path.find('/', 1); slash != std::string::npos;
       slash = path.find('/', slash + 1)) {
    mkdir(path.substr(0, slash).c_str(), OWNER_ONLY_FOLDER);
  }
  mkdir(path.c_str(), OWNER_ONLY_FOLDER);
  return isFolder(path);
}

bool PosixFiles::isFolder(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

void PosixFiles::keepPrivate(const std::string& folder) {
  if (!isFolder(folder)) return;
  takeRightsOfOthers(folder);
  std::error_code ended;
  for (fs::directory_iterator entry(folder, ended); !ended && entry != fs::directory_iterator();
       entry.increment(ended)) {
    std::error_code gone;
    if (fs::is_regular_file(entry->symlink_status(gone))) takeRightsOfOthers(entry->path());
  }
}

std::optional<std::string> PosixFiles::read(const std::string& path) {
  const OpenFile file(path, O_RDONLY);
  return file.isOpen() && file.size() <= LARGEST_FILE ? file.readAll(LARGEST_FILE) : std::nullopt;
}

std::optional<std::uint64_t> PosixFiles::size(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || S_ISDIR(status.st_mode)) return std::nullopt;
  return static_cast<std::uint64_t>(status.st_size);
}

bool PosixFiles::replaceInPlace(const std::string& path, std::string_view text) {
  if (text.size() > LARGEST_FILE) return false;
  struct stat status {};
  const bool isNew = lstat(path.c_str(), &status) != 0;
  const OpenFile file = openOwn(path, O_RDWR | O_CREAT);
  if (!file.isOpen()) return false;
  const auto size = reservedSize(file, text.size());
  if (!size) {
    if (isNew) unlink(path.c_str());
    return false;
  }
  return file.writePages(padded(text, *size)) && file.flush() && file.truncate(text.size());
}

bool PosixFiles::replaceAtomically(const std::string& path, std::string_view text) {
  const OpenFile file = OpenFile::beside(path);
  if (!file.isOpen()) return false;
  if (file.write(text, 0) && file.flush() && rename(file.name().c_str(), path.c_str()) == 0) {
    return true;
  }
  unlink(file.name().c_str());
  return false;
}

bool PosixFiles::append(const std::string& path, std::string_view text) {
  const OpenFile file = openOwn(path, O_WRONLY);
  if (!file.isOpen()) return false;
  if (file.write(text, file.size())) return true;
  (void)file.truncate(file.size());
  return false;
}

bool PosixFiles::remove(const std::string& path) {
  return unlink(path.c_str()) == 0;
}

}  // namespace notewick
