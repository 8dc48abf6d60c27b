#pragma once

#include <QNetworkProxy>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "platform/linux/http/curl_loop.h"
#include "platform/linux/http/http_answer.h"
#include "platform/linux/http/trusted_authorities.h"

namespace notewick {

/// One request, from the search for its proxy to its outcome.
class HttpTransfer : public QObject, private CurlTransfer {
 public:
  using Ended = std::function<void(const HttpTransfer&, HttpOutcome)>;

  /// `ended` is called once, from the event loop, and does not destroy the transfer. From now on
  /// the transfer ends with a time-out when nothing moves for as long as `patience`. The loop has
  /// to stay.
  HttpTransfer(CurlLoop& loop, HttpRequest request, std::chrono::milliseconds patience,
               Ended ended);
  ~HttpTransfer() override;

  /// Sends the request, unless the transfer has ended. The authorities have to stay.
  void start(const QUrl& address, const QNetworkProxy& proxy, TrustedAuthorities& authorities);
  /// Ends the transfer, in a later turn.
  void fail(const std::string& description);

 private:
  static std::size_t onLine(char* bytes, std::size_t one, std::size_t count, void* self);
  static std::size_t onBody(char* bytes, std::size_t one, std::size_t count, void* self);

  void progressed() override { quiet_.start(); }
  void ended(CURLcode code) override;
  [[nodiscard]] std::optional<TransportError> failureOf(CURLcode code) const;
  void end(HttpOutcome outcome);

  CurlLoop& loop_;
  HttpRequest request_;
  Ended ended_;
  CurlList headers_;
  CurlEasy handle_;
  std::optional<HttpAnswer> answer_;
  QTimer quiet_;
};

}  // namespace notewick
