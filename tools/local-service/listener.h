#pragma once

#include <httplib.h>

#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tools/local-service/certificates.h"

namespace notewick::service {

/// Answers one request. Called from several threads at once.
using Handler = std::function<void(const httplib::Request&, httplib::Response&)>;

struct Route {
  std::string method;  // GET, POST, or DELETE, which is taken without a body
  std::string path;
  Handler handler;  // may throw
};
using Routes = std::vector<Route>;

/// Ends the work on a request: it is answered with the status and {"error": what()}.
struct Refusal : std::runtime_error {
  Refusal(int code, const std::string& text) : std::runtime_error(text), status(code) {}

  int status;
};

/// A handler that answers with the JSON that the function returns. Nobody is to keep the answer;
/// bytes that are not UTF-8 come out as U+FFFD.
[[nodiscard]] Handler answeringJson(
    std::function<nlohmann::json(const httplib::Request&)> function);

/// Serves HTTP or HTTPS on 127.0.0.1 from construction to destruction, on threads of its own. A
/// connection carries one request. What a handler throws is answered: a refusal as it says, JSON
/// that is not what the handler takes with 400, anything else with 500.
class Listener {
 public:
  static constexpr std::size_t BODY_LIMIT = 1 << 20;

  /// What is done around each handler, also around that of unknown paths.
  using Wrap = std::function<Handler(Handler)>;

  /// Port 0 takes any free one; without certificates HTTP is spoken. Throws std::runtime_error for
  /// a port that is taken, or certificates that cannot be used.
  Listener(
      int port, const std::optional<CertificateFiles>& tls, const std::vector<Routes>& routes,
      const Wrap& wrap = [](const Handler& handler) { return handler; });

  /// Takes no more connections, and returns when those that stand have ended: when all requests are
  /// answered, but for connections on which nobody speaks only after a minute.
  ~Listener();

  [[nodiscard]] int port() const { return port_; }

 private:
  int bind(int port);

  std::unique_ptr<httplib::Server> server_;
  int port_;
  std::thread thread_;
};

}  // namespace notewick::service
