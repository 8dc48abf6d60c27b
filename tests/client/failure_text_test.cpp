#include "client/failure_text.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

AnswerBody saying(const std::string& error) {
  AnswerBody body;
  body.error = error;
  return body;
}

std::string textOf(const std::string& error) {
  return failureText(saying(error), "Request failed", 422);
}

TEST(FailureText, IsTheServicesReason) {
  EXPECT_EQ(textOf("Participant archived"), "Participant archived");
  EXPECT_EQ(textOf(""), "");
}

TEST(FailureText, WithoutAReasonTellsTheStatus) {
  EXPECT_EQ(failureText(AnswerBody(), "Request failed", 404), "Request failed (404)");
}

}  // namespace
}  // namespace notewick
