#pragma once

#include <QNetworkProxyFactory>
#include <QObject>
#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "platform/http_session.h"
#include "platform/linux/http/curl_loop.h"
#include "platform/linux/http/desktop_proxies.h"
#include "platform/linux/http/http_transfer.h"
#include "platform/linux/http/trusted_authorities.h"

namespace notewick {

/// HTTP/1.1 through libcurl, on Qt's event loop.
///
/// Every request has a connection of its own and is sent at most once. A kept connection may be
/// dead after the machine slept, or be closed by the server just then; whether the service has
/// taken what was sent on it cannot be told. Besides the headers given go out Host and, with a
/// body, Content-Length.
///
/// An https address is reached through the user's proxy: the environment's (proxyOfEnvironment),
/// else the desktop's; loopback never. Certificates are verified against the system's authorities
/// and those in the file that SSL_CERT_FILE named (OpenSSL's variable) when the first request was
/// sent. Descriptions of errors are fixed English sentences.
class CurlHttpSession : public HttpSession {
 public:
  /// `desktopProxies` is called on another thread, and may take its time.
  explicit CurlHttpSession(
      const HttpSessionConfiguration& configuration,
      DesktopProxies::Ask desktopProxies = &QNetworkProxyFactory::systemProxyForQuery);
  ~CurlHttpSession() override;

  void send(HttpRequest request, HttpCompletion completion) override;

  /// When the certificate ends that a server showed last, whether it was trusted or not; absent
  /// before.
  [[nodiscard]] std::optional<std::chrono::sys_seconds> certificateEnd() const {
    return authorities_.certificateEnd();
  }

 private:
  HttpTransfer& makeTransfer(HttpRequest request, HttpCompletion completion);
  void startThroughProxy(HttpTransfer& transfer, const QUrl& address);
  [[nodiscard]] std::chrono::milliseconds patienceOf(const HttpRequest& request) const;
  void complete(const HttpTransfer& transfer, HttpCompletion completion, HttpOutcome outcome);

  HttpSessionConfiguration configuration_;
  TrustedAuthorities authorities_;
  DesktopProxies desktopProxies_;
  CurlLoop loop_;
  std::vector<std::unique_ptr<HttpTransfer>> transfers_;
  /// What is to be called later is dropped with it.
  QObject pending_;
};

}  // namespace notewick
