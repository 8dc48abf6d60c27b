#include "client/failure_text.h"

namespace notewick {

std::string failureText(const AnswerBody& body, const std::string& otherwise, int statusCode) {
  return body.error.value_or(otherwise + " (" + std::to_string(statusCode) + ")");
}

}  // namespace notewick
