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

}  // namespace notewick
