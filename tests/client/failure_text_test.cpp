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

TEST(FailureText, IsTheServicesReasonOrElseTheStatus) {
  EXPECT_EQ(textOf("Participant archived"), "Participant archived");
  EXPECT_EQ(textOf(""), "");
  EXPECT_EQ(failureText(AnswerBody(), "Request failed", 404), "Request failed (404)");
}

TEST(FailureText, AReasonHasAtMostAThousandCharacters) {
  EXPECT_EQ(textOf(std::string(1000, 'x')), std::string(1000, 'x'));
  EXPECT_EQ(textOf(std::string(1001, 'x')), std::string(1000, 'x') + "…");
}

TEST(FailureText, AReasonHasAtMostEightKibibytes) {
  std::string reason = "e";
  while (reason.size() < 8191) reason += "\u0301";
  EXPECT_EQ(textOf(reason + "x"), reason + "x") << "8,192 bytes";
  EXPECT_EQ(textOf(reason + "ä"), reason + "…") << "8,193 bytes";
}

TEST(BlamesCredentials, InAnyLetterCaseAnywhereInTheWholeReason) {
  EXPECT_TRUE(blamesCredentials(saying("invalid email or password")));
  EXPECT_TRUE(blamesCredentials(saying("Sorry: Invalid Email or PASSWORD!")));
  EXPECT_TRUE(blamesCredentials(saying(std::string(1001, '<') + "Invalid email or password")))
      << "beyond what is shown of it";
}

TEST(BlamesCredentials, NotInOtherWords) {
  for (const auto* const reason : {"", "Invalid e-mail or password", "invalid email  or password",
                                   "\u0130nvalid email or password"})
    EXPECT_FALSE(blamesCredentials(saying(reason))) << reason;
  EXPECT_FALSE(blamesCredentials(AnswerBody()));
}

}  // namespace
}  // namespace notewick
