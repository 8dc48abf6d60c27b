#pragma once

#include <httplib.h>

#include <functional>
#include <string>
#include <thread>

#include "tests/support/certificate_authority.h"

namespace notewick {

/// An HTTPS server on the loopback that tells everyone "secret answer".
class TlsServer {
 public:
  /// `adjust` changes what TLS the server speaks.
  explicit TlsServer(
      const Identity& identity, const std::function<void(SSL_CTX&)>& adjust = [](SSL_CTX&) {})
      : server_([&](SSL_CTX& context) {
          adjust(context);
          return SSL_CTX_use_certificate(&context, identity.certificate.get()) == 1 &&
                 SSL_CTX_use_PrivateKey(&context, identity.key.get()) == 1;
        }) {
    server_.Get("/", [this](const httplib::Request&, httplib::Response& response) {
      ++answered_;
      response.set_content("secret answer", "text/plain");
    });
    port_ = server_.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running()) std::this_thread::yield();
  }
  TlsServer(const TlsServer&) = delete;
  TlsServer& operator=(const TlsServer&) = delete;
  ~TlsServer() {
    server_.stop();
    thread_.join();
  }

  [[nodiscard]] int port() const { return port_; }
  [[nodiscard]] std::string url(const std::string& host = "127.0.0.1") const {
    return "https://" + host + ":" + std::to_string(port_) + "/";
  }
  [[nodiscard]] int answered() const { return answered_; }

 private:
  httplib::SSLServer server_;
  std::atomic<int> answered_ = 0;
  int port_ = 0;
  std::thread thread_;
};

}  // namespace notewick
