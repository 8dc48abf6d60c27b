#include "platform/linux/http_answer.h"

#include <QNetworkReply>

namespace notewick {
namespace {

// An informational status is no answer yet (RFC 9110, section 15.2), but the stack ends there. It
// reports some statuses as errors of its own; their answers are complete all the same.
// (After a 307 or 308 it prepares to send the body again even though it does not follow.)
bool isAnswered(const QNetworkReply& reply, int status) {
  switch (reply.error()) {
    case QNetworkReply::ContentReSendError:
      return status == 307 || status == 308;
    case QNetworkReply::NoError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
    case QNetworkReply::ProtocolInvalidOperationError:
    case QNetworkReply::ContentAccessDenied:
    case QNetworkReply::ContentOperationNotPermittedError:
    case QNetworkReply::ContentNotFoundError:
    case QNetworkReply::AuthenticationRequiredError:
    case QNetworkReply::ContentConflictError:
    case QNetworkReply::ContentGoneError:
    case QNetworkReply::UnknownContentError:
    case QNetworkReply::InternalServerError:
    case QNetworkReply::OperationNotImplementedError:
    case QNetworkReply::ServiceUnavailableError:
    case QNetworkReply::UnknownServerError:
      return status >= 200;
    default:
      return false;
  }
}

// The stack does not always notice that a connection ended before the answer did.
bool isCutShort(const QNetworkReply& reply, int status) {
  if (status == 204 || status == 304) return false;
  return reply.rawHeader("Content-Length").toLongLong() > reply.bytesAvailable();
}

constexpr qint64 largestBody = 64 * 1024 * 1024;
constexpr const char* refusedProperty = "refusedAsTooLarge";
constexpr const char* lost = "The connection was lost.";
constexpr const char* tooLarge = "The server's answer is too large.";

const char* descriptionOf(const QNetworkReply& reply) {
  if (reply.property(refusedProperty).toBool()) return tooLarge;
  switch (reply.error()) {
    case QNetworkReply::ConnectionRefusedError:
      return "The connection was refused.";
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ContentReSendError:
      return lost;
    case QNetworkReply::HostNotFoundError:
      return "The server could not be found.";
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError:
      return "The request timed out.";
    case QNetworkReply::SslHandshakeFailedError:
      return "A secure connection could not be made.";
    case QNetworkReply::NoError:
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::ProtocolUnknownError:
      return "The server's answer could not be understood.";
    default:
      return "The connection failed.";
  }
}

tl::unexpected<TransportError> failed(const char* description) {
  return tl::unexpected(TransportError{description});
}

}  // namespace

void refuseLargeAnswer(QNetworkReply& reply) {
  QObject::connect(&reply, &QNetworkReply::downloadProgress, &reply, [&reply](qint64 received) {
    if (received <= largestBody || reply.isFinished()) return;
    reply.setProperty(refusedProperty, true);
    reply.abort();
  });
}

tl::expected<HttpResponse, TransportError> answerOf(QNetworkReply& reply) {
  const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  if (reply.bytesAvailable() > largestBody) return failed(tooLarge);
  if (!isAnswered(reply, status)) return failed(descriptionOf(reply));
  if (isCutShort(reply, status)) return failed(lost);
  HttpResponse response;
  response.statusCode = status;
  const QByteArray body = reply.readAll();
  if (!body.isEmpty()) response.body = body.toStdString();
  return response;
}

}  // namespace notewick
