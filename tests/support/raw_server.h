#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace notewick {

/// One connection that a RawServer took.
class RawConnection {
 public:
  explicit RawConnection(int socket) : socket_(socket) {}

  /// The request as it came: its head and, where the head tells a length, its body.
  [[nodiscard]] std::string readRequest() const;
  /// Exactly so many bytes; fewer where the connection ended.
  [[nodiscard]] std::string read(std::size_t count) const;
  /// False when the other side has closed the connection.
  bool write(const std::string& bytes) const;
  /// Writes the bytes over and over until the other side closes the connection, but at most `limit`
  /// bytes; how many the other side's system took.
  [[nodiscard]] std::size_t writeWithoutEnd(const std::string& bytes, std::size_t limit) const;
  /// Waits until the other side closes the connection.
  void waitForClose() const;
  /// Passes everything on between this connection and a server on the loopback, as a proxy does.
  void joinWith(int port) const;
  /// Lets the connection end by a reset instead of an orderly close.
  void resetOnClose() const;

 private:
  int socket_;
};

/// A server on the loopback that does to each connection what a test says, byte by byte, one
/// connection after the other. It closes a connection when `serve` returns, and breaks off the
/// current one when it is destroyed.
class RawServer {
 public:
  explicit RawServer(std::function<void(const RawConnection&)> serve);
  RawServer(const RawServer&) = delete;
  RawServer& operator=(const RawServer&) = delete;
  ~RawServer();

  /// A server that answers each request with these bytes.
  [[nodiscard]] static std::function<void(const RawConnection&)> answering(std::string bytes);

  [[nodiscard]] int port() const;
  [[nodiscard]] std::string url(const std::string& path = "/") const;
  [[nodiscard]] int connections() const { return connections_; }

 private:
  void run();
  void end(int socket);

  std::function<void(const RawConnection&)> serve_;
  int listener_;
  std::atomic<int> connections_ = 0;
  std::mutex mutex_;
  int current_ = -1;
  std::thread thread_;
};

/// What several threads write down.
class SharedLog {
 public:
  void add(std::string entry);
  [[nodiscard]] std::vector<std::string> entries() const;

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> entries_;
};

}  // namespace notewick
