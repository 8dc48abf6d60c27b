#pragma once

#include <tl/expected.hpp>

#include "platform/http_session.h"

class QNetworkReply;

namespace notewick {

/// Ends the reply when its body grows beyond 64 MiB: no answer of the service comes near that.
void refuseLargeAnswer(QNetworkReply& reply);

/// What a finished reply says: any complete final HTTP answer, whatever its status, or why there is
/// none. An informational one (1xx) is none: what the server did with the request is not known.
/// A chunked answer whose connection breaks may pass for complete, as the stack hides the chunks
/// and does not always tell; whoever reads the body finds that it ends too early.
[[nodiscard]] tl::expected<HttpResponse, TransportError> answerOf(QNetworkReply& reply);

}  // namespace notewick
