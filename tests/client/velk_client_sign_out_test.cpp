#include <gmock/gmock.h>

#include "client/velk_client.h"
#include "tests/support/client_world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using SignOutTest = ClientTest;

TEST_F(SignOutTest, SigningOutForgetsEverythingAndSendsNothing) {
  hasFreshToken();
  client().signOut();
  EXPECT_FALSE(client().isSignedIn());
  EXPECT_EQ(client().userEmail(), std::nullopt);
  EXPECT_FALSE(defaults.values.contains("VELKUserEmail"));
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  EXPECT_THAT(service.requests, IsEmpty());
  EXPECT_EQ(errorOf(fetch()), VELKError::notSignedIn());
}

class OvertakenTest : public ClientTest {
 protected:
  /// A call whose refresh has been sent and whose answer is on its way.
  OvertakenTest() {
    signIn();
    service.holdsAnswers();
    client().fetchParticipants(call.completion());
  }

  Received<std::vector<Participant>> call;
};

TEST_F(OvertakenTest, ASignOutWinsOverARefreshUnderWay) {
  client().signOut();
  service.releasesAll();
  EXPECT_EQ(errorOf(call.only()), VELKError::notSignedIn());
  EXPECT_FALSE(client().isSignedIn());
  EXPECT_THAT(service.trail(), ElementsAre("POST /api/desktop/auth/refresh"));
}

TEST_F(OvertakenTest, AnOldRefreshDoesNotTouchANewSignIn) {
  service.backend.revokeTokens();
  client().signOut();
  Received<void> signedIn;
  client().login("ada@velk.example", "correct horse", signedIn.completion());
  service.releases(1);
  ASSERT_TRUE(signedIn.only());
  const auto token = secrets.refreshToken();
  service.releasesAll();
  EXPECT_EQ(secrets.refreshToken(), token);
  EXPECT_TRUE(client().isSignedIn());
}

TEST_F(OvertakenTest, ACallOfAnEarlierSignInMayBeTriedAgain) {
  client().signOut();
  Received<void> signedIn;
  client().login("ada@velk.example", "correct horse", signedIn.completion());
  service.releases(1);
  service.releasesAll();
  EXPECT_EQ(errorOf(call.only()), VELKError::network("Authorisation expired — will retry"));
}

TEST_F(SignOutTest, ParticipantsOfAnEarlierSignInAreNotDelivered) {
  hasFreshToken();
  service.holdsAnswers();
  Received<std::vector<Participant>> call;
  client().fetchParticipants(call.completion());
  client().signOut();
  service.releasesAll();
  EXPECT_EQ(errorOf(call.only()), VELKError::notSignedIn());
}

TEST_F(SignOutTest, ANoteThatTheServiceTookIsTakenAlsoAfterASignOut) {
  hasFreshToken();
  service.holdsAnswers();
  Received<std::optional<std::string>> call;
  client().captureNote("1", "x", 15, "2024-05-02", call.completion());
  client().signOut();
  service.releasesAll();
  EXPECT_TRUE(call.only());
}

}  // namespace
}  // namespace notewick
