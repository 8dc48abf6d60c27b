#include "platform/linux/http_session.h"

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QUrl>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/linux/http_answer.h"
#include "platform/linux/upload_once.h"

namespace notewick {
namespace {

QSslConfiguration systemAndUserAuthorities() {
  QSslConfiguration trust = QSslConfiguration::defaultConfiguration();
  const QString file = qEnvironmentVariable("SSL_CERT_FILE");
  if (!file.isEmpty()) trust.addCaCertificates(file);
  return trust;
}

std::optional<QUrl> webAddress(const std::string& text) {
  QUrl url(QString::fromStdString(text), QUrl::StrictMode);
  const bool isWeb = url.scheme() == "https" || url.scheme() == "http";
  if (!url.isValid() || !isWeb || url.host().isEmpty()) return std::nullopt;
  url.setUserInfo({});
  return url;
}

void keepNothing(QNetworkRequest& request) {
  request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
}

void setHeaders(QNetworkRequest& request, const HttpRequest& from) {
  request.setRawHeader("Connection", "close");
  request.setRawHeader("Accept-Encoding", "identity");
  request.setRawHeader("Accept-Language", "*");
  for (const auto& [name, value] : from.headers) {
    request.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
  }
  if (!from.body) return;
  request.setHeader(QNetworkRequest::ContentLengthHeader, static_cast<qint64>(from.body->size()));
  request.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
}

}  // namespace

QtHttpSession::QtHttpSession(const HttpSessionConfiguration& configuration)
    : configuration_(configuration) {}

QtHttpSession::~QtHttpSession() = default;

void QtHttpSession::send(HttpRequest request, HttpCompletion completion) {
  QNetworkReply* const reply = start(request);
  if (reply == nullptr) {
    complete(std::move(completion), tl::unexpected(TransportError{"The address is not valid."}));
    return;
  }
  refuseLargeAnswer(*reply);
  QObject::connect(
      reply, &QNetworkReply::finished, &pending_,
      [this, reply, completion = std::move(completion)] { finished(*reply, completion); });
}

void QtHttpSession::finished(QNetworkReply& reply, HttpCompletion completion) {
  const bool givenUp = reply.error() == QNetworkReply::OperationCanceledError;
  if (givenUp && reply.manager() == network_.get()) retired_.push_back(std::move(network_));
  reply.deleteLater();
  complete(std::move(completion), answerOf(reply));
}

QNetworkReply* QtHttpSession::start(const HttpRequest& request) {
  const auto url = webAddress(request.url);
  if (!url) return nullptr;
  if (!network_) makeNetwork();
  QNetworkRequest prepared(*url);
  prepared.setSslConfiguration(trust_);
  prepared.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                        QNetworkRequest::ManualRedirectPolicy);
  prepared.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  const double timeout = request.timeout > 0 ? request.timeout : configuration_.requestTimeout;
  prepared.setTransferTimeout(static_cast<int>(std::lround(timeout * 1000)));
  keepNothing(prepared);
  setHeaders(prepared, request);
  UploadOnce* const body = request.body ? new UploadOnce(*request.body) : nullptr;
  QNetworkReply* const reply =
      network_->sendCustomRequest(prepared, QByteArray::fromStdString(request.method), body);
  if (body != nullptr) body->setParent(reply);
  return reply;
}

void QtHttpSession::makeNetwork() {
  network_ = std::make_unique<QNetworkAccessManager>();
  network_->setProxy(QNetworkProxy::NoProxy);
  trust_ = systemAndUserAuthorities();
}

void QtHttpSession::destroyIdleNetworks() {
  std::erase_if(retired_, [](const auto& network) {
    const auto replies = network->template findChildren<QNetworkReply*>();
    return std::ranges::all_of(replies, &QNetworkReply::isFinished);
  });
}

void QtHttpSession::complete(HttpCompletion completion,
                             tl::expected<HttpResponse, TransportError> result) {
  const auto later = [this, completion = std::move(completion), result = std::move(result)] {
    destroyIdleNetworks();
    completion(result);
  };
  QMetaObject::invokeMethod(&pending_, later, Qt::QueuedConnection);
}

}  // namespace notewick
