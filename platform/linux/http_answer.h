#pragma once

#include <tl/expected.hpp>

#include "platform/http_session.h"

class QNetworkReply;

namespace notewick {

/// Ends the reply when its body grows beyond 64 MiB: no answer of the service comes near that.
void refuseLargeAnswer(QNetworkReply& reply);

/// What a finished reply says: any complete HTTP answer, whatever its status, or why there is none.
/// A chunked answer whose connection breaks may pass for complete, as the stack hides the chunks
/// and does not always tell; whoever reads the body finds that it ends too early.
[[nodiscard]] tl::expected<HttpResponse, TransportError> answerOf(QNetworkReply& reply);

}  // namespace notewick
