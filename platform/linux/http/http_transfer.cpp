#include "platform/linux/http/http_transfer.h"

#include <utility>

#include "platform/linux/http/http_errors.h"
#include "platform/linux/http/transfer_options.h"

namespace notewick {

HttpTransfer::HttpTransfer(CurlLoop& loop, HttpRequest request, std::chrono::milliseconds patience,
                           Ended ended)
    : loop_(loop), request_(std::move(request)), ended_(std::move(ended)) {
  quiet_.setSingleShot(true);
  quiet_.setInterval(patience);
  connect(&quiet_, &QTimer::timeout, this,
          [this] { end(tl::unexpected(TransportError{http_error::TIMED_OUT})); });
  quiet_.start();
}

HttpTransfer::~HttpTransfer() {
  if (handle_) loop_.remove(handle_.get());
}

void HttpTransfer::start(const QUrl& address, const QNetworkProxy& proxy,
                         TrustedAuthorities& authorities) {
  if (!ended_) return;
  headers_ = headersOf(request_);
  if (!headers_) return fail(http_error::INVALID_REQUEST);
  const bool tunnel = proxy.type() == QNetworkProxy::HttpProxy;
  answer_.emplace(tunnel ? FirstHead::proxy : FirstHead::service);
  handle_.reset(curl_easy_init());
  CURL* const handle = handle_.get();
  setRequest(handle, address, request_);
  setSecurity(handle, authorities);
  setProxy(handle, proxy);
  curl_easy_setopt(handle, CURLOPT_HTTPHEADER, headers_.get());
  curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &onLine);
  curl_easy_setopt(handle, CURLOPT_HEADERDATA, this);
  curl_easy_setopt(handle, CURLOPT_MAXFILESIZE_LARGE,
                   static_cast<curl_off_t>(HttpAnswer::LARGEST_BODY));
  curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &onBody);
  curl_easy_setopt(handle, CURLOPT_WRITEDATA, this);
  loop_.add(handle, *this);
}

void HttpTransfer::fail(const std::string& description) {
  QMetaObject::invokeMethod(
      this, [this, description] { end(tl::unexpected(TransportError{description})); },
      Qt::QueuedConnection);
}

// NOLINTBEGIN(bugprone-unchecked-optional-access): libcurl calls these once the transfer runs
std::size_t HttpTransfer::onLine(char* bytes, std::size_t /*one*/, std::size_t count, void* self) {
  return static_cast<HttpTransfer*>(self)->answer_->takeLine({bytes, count}) ? count : 0;
}

std::size_t HttpTransfer::onBody(char* bytes, std::size_t /*one*/, std::size_t count, void* self) {
  return static_cast<HttpTransfer*>(self)->answer_->takeBody({bytes, count}) ? count : 0;
}

void HttpTransfer::ended(CURLcode code) {
  if (code == CURLE_FILESIZE_EXCEEDED) answer_->leaveBodyOut();
  end(std::move(*answer_).outcome(failureOf(code)));
}
// NOLINTEND(bugprone-unchecked-optional-access)

std::optional<TransportError> HttpTransfer::failureOf(CURLcode code) const {
  if (code == CURLE_OK) return std::nullopt;
  long systemError = 0;
  curl_easy_getinfo(handle_.get(), CURLINFO_OS_ERRNO, &systemError);
  return TransportError{descriptionOf(code, systemError)};
}

void HttpTransfer::end(HttpOutcome outcome) {
  quiet_.stop();
  if (handle_) loop_.remove(handle_.get());
  handle_.reset();
  if (const auto ended = std::exchange(ended_, nullptr)) ended(*this, std::move(outcome));
}

}  // namespace notewick
