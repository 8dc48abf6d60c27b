#include "client/failure_text.h"

#include "model/bounded_text.h"
#include "model/unicode.h"

namespace notewick {
namespace {

constexpr TextBound REASON_BOUND{1000, 8 * KIB};

}  // namespace

std::string failureText(const AnswerBody& body, const std::string& otherwise, int statusCode) {
  if (body.error) return boundedText(*body.error, REASON_BOUND);
  return otherwise + " (" + std::to_string(statusCode) + ")";
}

bool blamesCredentials(const AnswerBody& body) {
  return body.error &&
         lowerCased(*body.error).find("invalid email or password") != std::string::npos;
}

Result<AnswerBody> resultOf(int statusCode, AnswerBody body) {
  if (statusCode == 200) return body;
  if (statusCode == 401) {
    return tl::unexpected(VELKError::network("Authorisation expired — will retry"));
  }
  if (statusCode == 429 || (statusCode >= 500 && statusCode <= 599)) {
    return tl::unexpected(VELKError::network(failureText(body, "Server busy", statusCode)));
  }
  return tl::unexpected(VELKError::api(failureText(body, "Request failed", statusCode)));
}

}  // namespace notewick
