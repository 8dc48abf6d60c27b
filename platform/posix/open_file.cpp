#include "platform/posix/open_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

namespace notewick {
namespace {

constexpr mode_t OWNER_ONLY = 0600;
constexpr std::size_t PAGE = 4096;

template <typename Call>
auto uninterrupted(const Call& call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace

OpenFile::OpenFile(const std::string& path, int flags)
    : OpenFile(uninterrupted([&] {
                 // O_NONBLOCK: opening a pipe that nobody reads would wait for ever.
                 return open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, OWNER_ONLY);
               }),
               path) {}

OpenFile::OpenFile(int descriptor, std::string name)
    : descriptor_(descriptor), name_(std::move(name)) {
  struct stat status {};
  if (!isOpen()) return;
  if (fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode)) {
    size_ = static_cast<std::uint64_t>(status.st_size);
  } else {
    close(std::exchange(descriptor_, -1));
  }
}

OpenFile OpenFile::beside(const std::string& path) {
  std::string name = path + ".XXXXXX";
  const int descriptor = mkstemp(name.data());
  if (descriptor >= 0) fcntl(descriptor, F_SETFD, FD_CLOEXEC);
  return {descriptor, std::move(name)};
}

OpenFile::OpenFile(OpenFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)),
      name_(std::move(other.name_)),
      size_(other.size_) {}

OpenFile::~OpenFile() {
  if (isOpen()) close(descriptor_);
}

std::optional<std::string> OpenFile::readAll(std::uint64_t most) const {
  std::string contents;
  contents.reserve(size_);
  std::array<char, 16384> chunk;
  for (;;) {
    const ssize_t count =
        uninterrupted([&] { return ::read(descriptor_, chunk.data(), chunk.size()); });
    if (count < 0 || contents.size() > most) return std::nullopt;
    if (count == 0) return contents;
    contents.append(chunk.data(), static_cast<std::size_t>(count));
  }
}

bool OpenFile::write(std::string_view text, std::uint64_t offset) const {
  while (!text.empty()) {
    const ssize_t count = uninterrupted(
        [&] { return pwrite(descriptor_, text.data(), text.size(), static_cast<off_t>(offset)); });
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
    offset += static_cast<std::uint64_t>(count);
  }
  return true;
}

bool OpenFile::writePages(std::string_view contents) const {
  return writePastCache(contents) || write(contents, 0);
}

#ifdef O_DIRECT
bool OpenFile::writePastCache(std::string_view pages) const {
  if (pages.empty() || pages.size() % PAGE != 0) return false;
  std::string memory(pages.size() + PAGE, '\0');
  void* aligned = memory.data();
  std::size_t space = memory.size();
  std::align(PAGE, pages.size(), aligned, space);
  const int flags = fcntl(descriptor_, F_GETFL);
  if (flags < 0 || fcntl(descriptor_, F_SETFL, flags | O_DIRECT) != 0) return false;
  std::memcpy(aligned, pages.data(), pages.size());
  const ssize_t count =
      uninterrupted([&] { return pwrite(descriptor_, aligned, pages.size(), 0); });
  fcntl(descriptor_, F_SETFL, flags);
  return std::cmp_equal(count, pages.size());
}
#else
bool OpenFile::writePastCache(std::string_view /*pages*/) const {
  return false;
}
#endif

std::uint64_t OpenFile::wholePages(std::uint64_t size) {
  return (size + PAGE - 1) / PAGE * PAGE;
}

void OpenFile::takeRightsOfOthers() const {
  struct stat status {};
  if (fstat(descriptor_, &status) != 0 || (status.st_mode & (S_IRWXG | S_IRWXO)) == 0) return;
  fchmod(descriptor_, status.st_mode & S_IRWXU);
}

bool OpenFile::truncate(std::uint64_t size) const {
  return uninterrupted([&] { return ftruncate(descriptor_, static_cast<off_t>(size)); }) == 0;
}

bool OpenFile::flush() const {
#ifdef F_FULLFSYNC  // where fsync leaves the text in the drive's own memory
  if (fcntl(descriptor_, F_FULLFSYNC) == 0) return true;
#endif
  return uninterrupted([&] { return fsync(descriptor_); }) == 0;
}

}  // namespace notewick
