#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>

#include "tools/local-service/certificates.h"
#include "tools/local-service/http.h"

namespace httplib {
class Server;
}

namespace notewick::service {

struct ListenerSettings {
  std::string host = "127.0.0.1";  // or "::1", or "localhost", which is 127.0.0.1
  int port = 0;                    // 0: any free one
  std::optional<CertificateFiles> tls = {};
};

/// Whether the host is one of the three names of this machine's loopback that are served.
[[nodiscard]] bool isLoopback(const std::string& host);

/// Serves HTTP or HTTPS on loopback from construction to destruction, on threads of its own. The
/// only place that knows the HTTP library.
class Listener {
 public:
  static constexpr std::size_t BODY_LIMIT = 1 << 20;

  /// The handler outlives the listener. Throws std::runtime_error for an address other than
  /// loopback, a port that is taken, or certificates that cannot be used.
  Listener(const ListenerSettings& settings, Handler handler);
  ~Listener();
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  [[nodiscard]] int port() const { return port_; }

  /// Takes no more requests, lets those being answered finish (in two seconds at most), and returns
  /// when all threads ended.
  void stop();

 private:
  void route();
  void begin(int remotePort);
  void finish(int remotePort);
  [[nodiscard]] bool isBusy(int remotePort);
  int bind(const ListenerSettings& settings);

  Handler handler_;
  std::unique_ptr<httplib::Server> server_;
  int port_;
  std::mutex mutex_;
  std::set<int> busy_;  // remote ports of the connections with a request being answered
  std::atomic<bool> ended_ = false;
  std::thread thread_;
};

}  // namespace notewick::service
