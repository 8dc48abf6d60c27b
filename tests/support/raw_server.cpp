#include "tests/support/raw_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace notewick {
namespace {

std::size_t bodyLength(const std::string& head) {
  const std::string name = "content-length: ";
  for (std::size_t line = 0; line < head.size(); line = head.find('\n', line) + 1) {
    std::string start = head.substr(line, name.size());
    for (char& character : start) character = static_cast<char>(std::tolower(character));
    if (start == name) return std::strtoul(head.c_str() + line + name.size(), nullptr, 10);
  }
  return 0;
}

sockaddr_in loopback() {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

/// Passes on what is there; false at the end.
bool pass(const pollfd& from, int to) {
  if (from.revents == 0) return true;
  std::array<char, 4096> chunk{};
  const ssize_t count = recv(from.fd, chunk.data(), chunk.size(), 0);
  return count > 0 && RawConnection(to).write({chunk.data(), static_cast<std::size_t>(count)});
}

}  // namespace

std::string RawConnection::readRequest() const {
  std::string request;
  std::array<char, 4096> chunk{};
  for (;;) {
    const std::size_t end = request.find("\r\n\r\n");
    if (end != std::string::npos &&
        request.size() >= end + 4 + bodyLength(request.substr(0, end + 2))) {
      return request;
    }
    const ssize_t count = recv(socket_, chunk.data(), chunk.size(), 0);
    if (count <= 0) return request;
    request.append(chunk.data(), static_cast<std::size_t>(count));
  }
}

std::string RawConnection::read(std::size_t count) const {
  std::string bytes(count, '\0');
  const ssize_t came = recv(socket_, bytes.data(), count, MSG_WAITALL);
  bytes.resize(came > 0 ? static_cast<std::size_t>(came) : 0);
  return bytes;
}

bool RawConnection::write(const std::string& bytes) const {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count = ::send(socket_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (count <= 0) return false;
    sent += static_cast<std::size_t>(count);
  }
  return true;
}

std::size_t RawConnection::writeWithoutEnd(const std::string& bytes, std::size_t limit) const {
  std::size_t sent = 0;
  while (sent < limit && write(bytes)) sent += bytes.size();
  return sent;
}

void RawConnection::joinWith(int port) const {
  const int other = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = loopback();
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  if (connect(other, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
    std::array<pollfd, 2> ends{pollfd{socket_, POLLIN, 0}, pollfd{other, POLLIN, 0}};
    while (poll(ends.data(), ends.size(), -1) > 0 && pass(ends[0], other) &&
           pass(ends[1], socket_)) {
    }
  }
  close(other);
}

void RawConnection::waitForClose() const {
  std::array<char, 4096> chunk{};
  while (recv(socket_, chunk.data(), chunk.size(), 0) > 0) {
  }
}

void RawConnection::resetOnClose() const {
  const linger reset{1, 0};
  setsockopt(socket_, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
}

RawServer::RawServer(std::function<void(const RawConnection&)> serve)
    : serve_(std::move(serve)), listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  const sockaddr_in address = loopback();
  if (bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      listen(listener_, 64) != 0)
    throw std::runtime_error("The test has no port for its server.");
  thread_ = std::thread([this] { run(); });
}

RawServer::~RawServer() {
  {
    const std::lock_guard lock(mutex_);
    shutdown(listener_, SHUT_RDWR);
    if (current_ >= 0) shutdown(current_, SHUT_RDWR);
  }
  thread_.join();
  close(listener_);
}

std::function<void(const RawConnection&)> RawServer::answering(std::string bytes) {
  return [bytes = std::move(bytes)](const RawConnection& connection) {
    (void)connection.readRequest();
    connection.write(bytes);
  };
}

int RawServer::port() const {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
  return ntohs(address.sin_port);
}

std::string RawServer::url(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(port()) + path;
}

void RawServer::run() {
  for (;;) {
    const int socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) return;
    {
      const std::lock_guard lock(mutex_);
      current_ = socket;
    }
    ++connections_;
    serve_(RawConnection(socket));
    end(socket);
  }
}

void RawServer::end(int socket) {
  const std::lock_guard lock(mutex_);
  current_ = -1;
  close(socket);
}

void SharedLog::add(std::string entry) {
  const std::lock_guard lock(mutex_);
  entries_.push_back(std::move(entry));
}

std::vector<std::string> SharedLog::entries() const {
  const std::lock_guard lock(mutex_);
  return entries_;
}

}  // namespace notewick
