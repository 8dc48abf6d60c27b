#pragma once

#include <string>

#include "client/answer_body.h"

namespace notewick {

/// Why a call failed, from the body of the service's answer. Pure function.

/// The service's own words, or "`otherwise` (`statusCode`)" where it has none.
[[nodiscard]] std::string failureText(const AnswerBody& body, const std::string& otherwise,
                                      int statusCode);

}  // namespace notewick
