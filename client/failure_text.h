#pragma once

#include <string>

#include "client/answer_body.h"
#include "client/velk_error.h"

namespace notewick {

/// Why a call failed, from the body of the service's answer. Pure functions.

/// The service's own words, or "`otherwise` (`statusCode`)" where it has none. They end up in
/// panels, notifications, logs and the outbox: of longer ones the first 1,000 grapheme clusters, in
/// at most 8 KiB, then "…".
[[nodiscard]] std::string failureText(const AnswerBody& body, const std::string& otherwise,
                                      int statusCode);

/// Whether the service's words, all of them, blame e-mail or password: in any letter case.
[[nodiscard]] bool blamesCredentials(const AnswerBody& body);

/// What the answer to an authorised call means: the body where the service took it; `network` where
/// another try may help, which is 401, 429 and 500 to 599; else `api`, the service refused.
[[nodiscard]] Result<AnswerBody> resultOf(int statusCode, AnswerBody body);

}  // namespace notewick
