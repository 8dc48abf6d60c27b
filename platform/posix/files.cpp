#include "platform/posix/files.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "platform/posix/open_file.h"

namespace notewick {
namespace {

constexpr mode_t OWNER_ONLY_FOLDER = 0700;
constexpr std::uint64_t LARGEST_FILE = 1024 * 1024 * 1024;

std::string homeFromPasswordDatabase() {
  const passwd* const user = getpwuid(getuid());
  return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "";
}

bool isFolder(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool reserve(const OpenFile& file, std::size_t size) {
  if (size <= file.size()) return true;
  return file.write(std::string(size - file.size(), ' '), file.size());
}

// A file too large to be read holds nothing that a kill could lose.
std::string padded(std::string_view text, const OpenFile& file) {
  std::string contents(text);
  if (contents.size() < file.size() && file.size() <= LARGEST_FILE) {
    contents.resize(file.size(), ' ');
  }
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

std::optional<std::string> PosixFiles::read(const std::string& path) {
  const OpenFile file(path, O_RDONLY);
  return file.isOpen() && file.size() <= LARGEST_FILE ? file.readAll() : std::nullopt;
}

std::optional<std::uint64_t> PosixFiles::size(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || S_ISDIR(status.st_mode)) return std::nullopt;
  return static_cast<std::uint64_t>(status.st_size);
}

bool PosixFiles::replaceInPlace(const std::string& path, std::string_view text) {
  const bool isNew = access(path.c_str(), F_OK) != 0;
  const OpenFile file(path, O_RDWR | O_CREAT);
  if (!file.isOpen()) return false;
  if (!reserve(file, text.size())) {
    (void)file.truncate(file.size());
    if (isNew) unlink(path.c_str());
    return false;
  }
  return file.write(padded(text, file), 0) && file.flush() && file.truncate(text.size());
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
  const OpenFile file(path, O_WRONLY);
  if (!file.isOpen()) return false;
  if (file.write(text, file.size())) return true;
  (void)file.truncate(file.size());
  return false;
}

bool PosixFiles::remove(const std::string& path) {
  return unlink(path.c_str()) == 0;
}

}  // namespace notewick
