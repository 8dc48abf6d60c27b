#pragma once

#include <QNetworkRequest>
#include <QObject>
#include <QSslConfiguration>
#include <QUrl>
#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "platform/http_session.h"

class QNetworkAccessManager;
class QNetworkReply;

namespace notewick {

/// HTTP/1.1 through the toolkit's network stack.
///
/// Besides the headers given go out: Host, Content-Length with a body, and, because the stack puts
/// in its own where a request has none, "Connection: close", "Accept-Encoding: identity" and
/// "Accept-Language: *" in their most neutral form. No proxy is used.
///
/// Every request has a connection and a network stack of its own. One stack for all would go on
/// using a connection that the server keeps open, and that is dead after the machine slept or when
/// the server closes it unasked; and one whose TLS handshake was never answered. At most six
/// requests are under way, the others wait for their turn, as long as their time-out at most: a
/// request that was made long ago says what may no longer be true.
///
/// A request with a body is sent at most once. (The stack would send it again, unasked, when the
/// server closes the connection without an answer; a service could then have done the work twice.)
/// A request without a body it may repeat when the connection breaks within the head of the answer.
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
  using Outcome = tl::expected<HttpResponse, TransportError>;

  struct Waiting {
    std::uint64_t number;
    QUrl address;
    HttpRequest request;
    HttpCompletion completion;
  };

  void startWaiting();
  void start(Waiting next);
  [[nodiscard]] std::chrono::milliseconds timeoutOf(const HttpRequest& request) const;
  [[nodiscard]] QNetworkRequest prepared(const Waiting& next);
  void finished(QNetworkReply& reply, HttpCompletion completion);
  void giveUpIfWaiting(std::uint64_t number);
  void complete(HttpCompletion completion, Outcome outcome);

  HttpSessionConfiguration configuration_;
  std::optional<QSslConfiguration> trust_;
  std::uint64_t lastNumber_ = 0;
  std::deque<Waiting> waiting_;
  /// One for each request that is under way.
  std::vector<std::unique_ptr<QNetworkAccessManager>> networks_;
  /// What is to be called later is dropped with it; it goes before the networks do.
  QObject pending_;
};

}  // namespace notewick
