#include "platform/linux/http_session.h"

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/linux/http_answer.h"
#include "platform/linux/upload_once.h"

namespace notewick {
namespace {

constexpr std::size_t MOST_UNDER_WAY = 6;

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
  const auto address = webAddress(request.url);
  if (!address) {
    complete(std::move(completion), tl::unexpected(TransportError{"The address is not valid."}));
    return;
  }
  const auto number = ++lastNumber_;
  QTimer::singleShot(timeoutOf(request), &pending_, [this, number] { giveUpIfWaiting(number); });
  waiting_.push_back({number, *address, std::move(request), std::move(completion)});
  startWaiting();
}

void QtHttpSession::startWaiting() {
  while (!waiting_.empty() && networks_.size() < MOST_UNDER_WAY) {
    Waiting next = std::move(waiting_.front());
    waiting_.pop_front();
    start(std::move(next));
  }
}

void QtHttpSession::start(Waiting next) {
  auto& network = networks_.emplace_back(std::make_unique<QNetworkAccessManager>());
  network->setProxy(QNetworkProxy::NoProxy);
  const HttpRequest& request = next.request;
  UploadOnce* const body = request.body ? new UploadOnce(*request.body) : nullptr;
  QNetworkReply* const reply =
      network->sendCustomRequest(prepared(next), QByteArray::fromStdString(request.method), body);
  if (body != nullptr) body->setParent(reply);
  refuseLargeAnswer(*reply);
  QObject::connect(
      reply, &QNetworkReply::finished, &pending_,
      [this, reply, completion = std::move(next.completion)] { finished(*reply, completion); });
}

std::chrono::milliseconds QtHttpSession::timeoutOf(const HttpRequest& request) const {
  const double seconds = request.timeout > 0 ? request.timeout : configuration_.requestTimeout;
  return std::chrono::milliseconds(std::lround(seconds * 1000));
}

QNetworkRequest QtHttpSession::prepared(const Waiting& next) {
  if (!trust_) trust_ = systemAndUserAuthorities();
  QNetworkRequest request(next.address);
  request.setSslConfiguration(*trust_);
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                       QNetworkRequest::ManualRedirectPolicy);
  request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  request.setTransferTimeout(static_cast<int>(timeoutOf(next.request).count()));
  keepNothing(request);
  setHeaders(request, next.request);
  return request;
}

void QtHttpSession::finished(QNetworkReply& reply, HttpCompletion completion) {
  const Outcome outcome = answerOf(reply);
  const auto later = [this, network = reply.manager(), outcome,
                      completion = std::move(completion)] {
    std::erase_if(networks_, [&](const auto& one) { return one.get() == network; });
    startWaiting();
    completion(outcome);
  };
  QMetaObject::invokeMethod(&pending_, later, Qt::QueuedConnection);
}

void QtHttpSession::giveUpIfWaiting(std::uint64_t number) {
  const auto late = std::ranges::find(waiting_, number, &Waiting::number);
  if (late == waiting_.end()) return;
  complete(std::move(late->completion), tl::unexpected(TransportError{"The request timed out."}));
  waiting_.erase(late);
}

void QtHttpSession::complete(HttpCompletion completion, Outcome outcome) {
  const auto later = [completion = std::move(completion), outcome = std::move(outcome)] {
    completion(outcome);
  };
  QMetaObject::invokeMethod(&pending_, later, Qt::QueuedConnection);
}

}  // namespace notewick
