#pragma once

#include <QObject>
#include <QSslConfiguration>
#include <memory>
#include <vector>

#include "platform/http_session.h"

class QNetworkAccessManager;
class QNetworkReply;

namespace notewick {

/// HTTP/1.1 through the toolkit's network stack, which is made at the first request, so that
/// starting the program does not pay for it.
///
/// Besides the headers given go out: Host, Content-Length with a body, and, because the stack puts
/// in its own where a request has none, "Connection: close", "Accept-Encoding: identity" and
/// "Accept-Language: *" in their most neutral form. Every request has a connection of its own: they
/// are few, and one that was kept open is dead after the machine slept. No proxy is used.
///
/// A request with a body is sent at most once. (The stack would send it again, unasked, when the
/// server closes the connection without an answer; a service could then have done the work twice.)
/// A request without a body it may repeat when the connection breaks within the head of the answer.
///
/// After a request was given up the next ones get a network stack of their own: the stack goes on
/// using a connection whose TLS handshake was never answered, and would time out for ever.
///
/// Certificates are verified against the system's authorities and those in the file that
/// SSL_CERT_FILE names (OpenSSL's variable). An answer of more than 64 MiB is a transport error.
/// Descriptions of errors are fixed English sentences.
class QtHttpSession : public HttpSession {
 public:
  explicit QtHttpSession(const HttpSessionConfiguration& configuration);
  ~QtHttpSession() override;

  void send(HttpRequest request, HttpCompletion completion) override;

 private:
  [[nodiscard]] QNetworkReply* start(const HttpRequest& request);
  void makeNetwork();
  void finished(QNetworkReply& reply, HttpCompletion completion);
  void destroyIdleNetworks();
  void complete(HttpCompletion completion, tl::expected<HttpResponse, TransportError> result);

  HttpSessionConfiguration configuration_;
  std::unique_ptr<QNetworkAccessManager> network_;
  /// Those that other requests were still under way in when they were given up.
  std::vector<std::unique_ptr<QNetworkAccessManager>> retired_;
  QSslConfiguration trust_;
  /// What is to be called later is dropped with it; it goes before the networks do.
  QObject pending_;
};

}  // namespace notewick
