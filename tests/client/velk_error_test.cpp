#include "client/velk_error.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

TEST(VelkError, EachKindHasItsTextAndItsRemedy) {
  struct {
    VELKError error;
    std::string message;
    bool isRetryable;
    bool isRefusal;
    bool needsSignIn;
  } const rows[] = {
      {VELKError::api("Archived"), "Archived", false, true, false},
      {VELKError::network("No response"), "No response", true, false, false},
      {VELKError::notSignedIn(), "Not signed in", false, false, true},
      {VELKError::sessionExpired(), "Session expired — please sign in again", false, false, true},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.error.message(), row.message);
    EXPECT_EQ(row.error.isRetryable(), row.isRetryable) << row.message;
    EXPECT_EQ(row.error.isRefusal(), row.isRefusal) << row.message;
    EXPECT_EQ(row.error.needsSignIn(), row.needsSignIn) << row.message;
    EXPECT_FALSE(row.error.blamesCredentials()) << row.message;
  }
}

TEST(VelkError, WrongCredentialsAreARefusalThatBlamesThem) {
  const VELKError error = VELKError::wrongCredentials("Invalid email or password");
  EXPECT_TRUE(error.isRefusal());
  EXPECT_TRUE(error.blamesCredentials());
  EXPECT_EQ(error.message(), "Invalid email or password");
}

}  // namespace
}  // namespace notewick
