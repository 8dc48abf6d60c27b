#include "tools/local-service/connections.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <charconv>
#include <filesystem>
#include <optional>
#include <string>

namespace notewick::service {
namespace {

using NameOf = int (*)(int, sockaddr*, socklen_t*);

std::optional<int> portBy(NameOf nameOf, int descriptor) {
  sockaddr_storage address{};
  socklen_t size = sizeof address;
  if (nameOf(descriptor, reinterpret_cast<sockaddr*>(&address), &size) != 0) return std::nullopt;
  if (address.ss_family == AF_INET) {
    return ntohs(reinterpret_cast<const sockaddr_in*>(&address)->sin_port);
  }
  if (address.ss_family == AF_INET6) {
    return ntohs(reinterpret_cast<const sockaddr_in6*>(&address)->sin6_port);
  }
  return std::nullopt;
}

}  // namespace

void shutConnections(int localPort, const std::function<bool(int)>& chosen) {
  for (const auto& entry : std::filesystem::directory_iterator("/dev/fd")) {
    const auto name = entry.path().filename().string();
    int descriptor = -1;
    std::from_chars(name.data(), name.data() + name.size(), descriptor);
    const auto remote = portBy(getpeername, descriptor);
    if (remote && portBy(getsockname, descriptor) == localPort && chosen(*remote)) {
      shutdown(descriptor, SHUT_RDWR);
    }
  }
}

}  // namespace notewick::service
