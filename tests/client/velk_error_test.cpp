#include "client/velk_error.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

TEST(VelkError, ShowsItsText) {
  EXPECT_EQ(VELKError::api("Participant archived").message(), "Participant archived");
  EXPECT_EQ(VELKError::network("No response").message(), "No response");
  EXPECT_EQ(VELKError::notSignedIn().message(), "Not signed in");
  EXPECT_EQ(VELKError::sessionExpired().message(), "Session expired — please sign in again");
}

TEST(VelkError, OnlyANetworkErrorMayPassByItself) {
  EXPECT_TRUE(VELKError::network("x").isRetryable());
  EXPECT_FALSE(VELKError::api("x").isRetryable());
  EXPECT_FALSE(VELKError::notSignedIn().isRetryable());
  EXPECT_FALSE(VELKError::sessionExpired().isRetryable());
}

TEST(VelkError, OnlySignInErrorsNeedASignIn) {
  EXPECT_TRUE(VELKError::notSignedIn().needsSignIn());
  EXPECT_TRUE(VELKError::sessionExpired().needsSignIn());
  EXPECT_FALSE(VELKError::api("x").needsSignIn());
  EXPECT_FALSE(VELKError::network("x").needsSignIn());
}

TEST(VelkError, OnlyWrongCredentialsBlameThem) {
  const VELKError error = VELKError::wrongCredentials("x");
  EXPECT_TRUE(error.blamesCredentials());
  EXPECT_EQ(error.kind(), VELKError::Kind::api);
  EXPECT_EQ(error.message(), "x");
  EXPECT_FALSE(VELKError::api("Invalid email or password").blamesCredentials());
  EXPECT_FALSE(VELKError::network("x").blamesCredentials());
}

}  // namespace
}  // namespace notewick
