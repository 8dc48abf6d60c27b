// Loaded into the program by the tests: tells what it asks of the file of its notes, and refuses
// it.
//
// FAULTY_DISK names a folder. Every call for outbox.json, and every connection over the network, is
// a line of its file "calls". A line "call errno" in its file "fault" has that call fail.

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view NOTES = "/outbox.json";

std::string inFolder(const std::string& name) {
  const char* const folder = std::getenv("FAULTY_DISK");
  return std::string(folder != nullptr ? folder : "/nonexistent") + "/" + name;
}

std::string pathOf(int file) {
  std::string path(4096, '\0');
  const std::string link = "/proc/self/fd/" + std::to_string(file);
  const ssize_t length = readlink(link.c_str(), path.data(), path.size());
  return path.substr(0, length > 0 ? static_cast<std::size_t>(length) : 0);
}

void tell(const std::string& call) {
  std::ofstream(inFolder("calls"), std::ios::app) << call << '\n';
}

bool isRefused(const std::string& call, std::string_view path) {
  if (!path.ends_with(NOTES)) return false;
  tell(call);
  std::string refused;
  int error = 0;
  std::ifstream(inFolder("fault")) >> refused >> error;
  if (refused != call) return false;
  tell("refused");
  errno = error;
  return true;
}

}  // namespace

extern "C" int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = va_arg(rest, mode_t);
  va_end(rest);
  const bool writes = (flags & O_ACCMODE) != O_RDONLY;
  if (writes && isRefused("open", path)) return -1;
  return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

extern "C" ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset) {
  if (isRefused("write", pathOf(file))) return -1;
  return syscall(SYS_pwrite64, file, bytes, count, offset);
}

extern "C" int fsync(int file) {
  if (isRefused("flush", pathOf(file))) return -1;
  return static_cast<int>(syscall(SYS_fsync, file));
}

extern "C" int ftruncate(int file, off_t size) noexcept {
  if (isRefused("cut", pathOf(file))) return -1;
  return static_cast<int>(syscall(SYS_ftruncate, file, size));
}

extern "C" int connect(int socket, const sockaddr* address, socklen_t length) {
  if (address->sa_family == AF_INET || address->sa_family == AF_INET6) tell("connect");
  return static_cast<int>(syscall(SYS_connect, socket, address, length));
}
