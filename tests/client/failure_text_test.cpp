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

TEST(FailureText, AReasonOfAThousandCharactersStaysAsItIs) {
  EXPECT_EQ(textOf(std::string(1000, 'x')), std::string(1000, 'x'));
  EXPECT_EQ(textOf(std::string(1001, 'x')), std::string(1000, 'x') + "…");
}

TEST(FailureText, AReasonIsAtMostEightKibibytes) {
  std::string reason = "e";
  while (reason.size() < 8191) reason += "\u0301";
  EXPECT_EQ(textOf(reason + "x"), reason + "x") << "8,192 bytes";
  EXPECT_EQ(textOf(reason + "xy"), reason + "x…");
  EXPECT_EQ(textOf(reason + "ä"), reason + "…");
  EXPECT_EQ(textOf(reason + "\u0301"), "…") << "a single character of 8,193 bytes";
}

TEST(BlamesCredentials, InAnyLetterCaseAnywhereInTheReason) {
  for (const auto* const reason :
       {"Invalid email or password", "invalid email or password", "INVALID EMAIL OR PASSWORD",
        "Sorry: Invalid Email Or Password!"})
    EXPECT_TRUE(blamesCredentials(saying(reason))) << reason;
}

TEST(BlamesCredentials, NotInOtherWords) {
  for (const auto* const reason :
       {"", "Invalid password", "Invalid e-mail or password", "invalid email  or password",
        "\u0130nvalid email or password", "invalid email or passwor"})
    EXPECT_FALSE(blamesCredentials(saying(reason))) << reason;
  EXPECT_FALSE(blamesCredentials(AnswerBody()));
}

TEST(BlamesCredentials, AlsoBeyondWhatIsShownOfTheReason) {
  const std::string reason = std::string(1'000'000, '<') + "Invalid email or password";
  EXPECT_TRUE(blamesCredentials(saying(reason)));
  EXPECT_EQ(textOf(reason), std::string(1000, '<') + "…");
}

}  // namespace
}  // namespace notewick
