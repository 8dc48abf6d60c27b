#include "platform/linux/http_session.h"

#include <QPointer>
#include <cmath>
#include <optional>
#include <utility>

#include "platform/linux/http/http_errors.h"
#include "platform/linux/http/proxy_choice.h"
#include "platform/web_address.h"

namespace notewick {
namespace {

std::optional<QUrl> webAddress(const std::string& text) {
  QUrl url(QString::fromStdString(text), QUrl::StrictMode);
  const bool isWeb = url.scheme() == "https" || url.scheme() == "http";
  if (!url.isValid() || !isWeb || url.host().isEmpty()) return std::nullopt;
  url.setUserInfo({});
  return url;
}

}  // namespace

CurlHttpSession::CurlHttpSession(const HttpSessionConfiguration& configuration,
                                 DesktopProxies::Ask desktopProxies)
    : configuration_(configuration),
      authorities_(qEnvironmentVariable("SSL_CERT_FILE").toStdString()),
      desktopProxies_(std::move(desktopProxies)) {}

CurlHttpSession::~CurlHttpSession() = default;

void CurlHttpSession::send(HttpRequest request, HttpCompletion completion) {
  const auto address = webAddress(request.url);
  HttpTransfer& transfer = makeTransfer(std::move(request), std::move(completion));
  if (!address) return transfer.fail(http_error::INVALID_ADDRESS);
  if (address->scheme() == "http" || isLoopbackAddress(address->toString().toStdString())) {
    transfer.start(*address, QNetworkProxy::NoProxy, authorities_);
  } else {
    startThroughProxy(transfer, *address);
  }
}

HttpTransfer& CurlHttpSession::makeTransfer(HttpRequest request, HttpCompletion completion) {
  const auto patience = patienceOf(request);
  const auto ended = [this, completion = std::move(completion)](const HttpTransfer& transfer,
                                                                HttpOutcome outcome) {
    complete(transfer, completion, std::move(outcome));
  };
  return *transfers_.emplace_back(
      std::make_unique<HttpTransfer>(loop_, std::move(request), patience, ended));
}

void CurlHttpSession::startThroughProxy(HttpTransfer& transfer, const QUrl& address) {
  if (const auto choice = proxyOfEnvironment(address, QProcessEnvironment::systemEnvironment())) {
    if (!*choice) return transfer.fail(choice->error().description);
    return transfer.start(address, **choice, authorities_);
  }
  const auto startThrough = [this, address, waiting = QPointer(&transfer)](const auto& proxies) {
    if (waiting) waiting->start(address, proxyOfDesktop(proxies), authorities_);
  };
  desktopProxies_.find(address, startThrough);
}

std::chrono::milliseconds CurlHttpSession::patienceOf(const HttpRequest& request) const {
  const double seconds = request.timeout > 0 ? request.timeout : configuration_.requestTimeout;
  return std::chrono::milliseconds(std::lround(seconds * 1000));
}

void CurlHttpSession::complete(const HttpTransfer& transfer, HttpCompletion completion,
                               HttpOutcome outcome) {
  auto later = [this, over = &transfer, completion = std::move(completion),
                outcome = std::move(outcome)]() mutable {
    std::erase_if(transfers_, [&](const auto& one) { return one.get() == over; });
    completion(std::move(outcome));
  };
  QMetaObject::invokeMethod(&pending_, std::move(later), Qt::QueuedConnection);
}

}  // namespace notewick
