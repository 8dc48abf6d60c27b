#include <gmock/gmock.h>

#include "client/velk_client.h"
#include "tests/support/client_world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

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

// --- Overtaken by a sign-out ---------------------------------------------------------------------

const VELKError OVERTAKEN = VELKError::network("Signed out meanwhile");

class OvertakenRefreshTest : public ClientTest {
 protected:
  /// A call whose refresh has been sent and whose answer is on its way.
  OvertakenRefreshTest() { signIn(); }

  void calls() {
    service.holdsAnswers();
    client().fetchParticipants(call.completion());
  }

  Received<std::vector<Participant>> call;
};

TEST_F(OvertakenRefreshTest, TheTokensItBringsAreNotTaken) {
  calls();
  client().signOut();
  service.releasesAll();
  EXPECT_EQ(errorOf(call.only()), OVERTAKEN);
  EXPECT_FALSE(client().isSignedIn());
  EXPECT_THAT(service.trail(), ElementsAre("POST /api/desktop/auth/refresh"));
}

TEST_F(OvertakenRefreshTest, ARefusalIsNotPassedOn) {
  service.backend.revokeTokens();
  calls();
  client().signOut();
  service.releasesAll();
  EXPECT_EQ(errorOf(call.only()), OVERTAKEN);
}

TEST_F(OvertakenRefreshTest, ATransportFailureIsPassedOn) {
  service.fails(REFRESH_PATH, "The connection was lost.");
  calls();
  client().signOut();
  service.releasesAll();
  EXPECT_EQ(errorOf(call.only()), VELKError::network("The connection was lost."));
}

TEST_F(OvertakenRefreshTest, ANewSignInIsNotTouched) {
  service.backend.revokeTokens();
  calls();
  client().signOut();
  Received<void> signedIn;
  client().login("ada@velk.example", "correct horse", signedIn.completion());
  service.releases(1);
  ASSERT_TRUE(signedIn.only());
  const auto token = secrets.refreshToken();
  service.releasesAll();
  EXPECT_EQ(errorOf(call.only()), OVERTAKEN);
  EXPECT_EQ(secrets.refreshToken(), token);
  EXPECT_TRUE(client().isSignedIn());
}

class OvertakenCallTest : public ClientTest {
 protected:
  OvertakenCallTest() { hasFreshToken(); }

  /// What a call for the participants gives that a sign-out overtakes.
  std::optional<VELKError> fetchOvertaken() {
    service.holdsAnswers();
    Received<std::vector<Participant>> call;
    client().fetchParticipants(call.completion());
    client().signOut();
    service.releasesAll();
    return errorOf(call.only());
  }

  Result<std::optional<std::string>> captureOvertaken() {
    service.holdsAnswers();
    Received<std::optional<std::string>> call;
    client().captureNote("1", "x", 15, "2024-05-02", call.completion());
    client().signOut();
    service.releasesAll();
    return call.only();
  }
};

TEST_F(OvertakenCallTest, ParticipantsAreNotDelivered) {
  EXPECT_EQ(fetchOvertaken(), OVERTAKEN);
}

TEST_F(OvertakenCallTest, OfParticipantsNoAnswerIsPassedOnAndEveryTransportFailure) {
  service.answers(PARTICIPANTS_PATH, 403);
  EXPECT_EQ(fetchOvertaken(), OVERTAKEN);
  hasFreshToken();
  service.fails(PARTICIPANTS_PATH, "The request timed out.");
  EXPECT_EQ(fetchOvertaken(), VELKError::network("The request timed out."));
}

TEST_F(OvertakenCallTest, ANoteThatTheServiceTookIsTaken) {
  EXPECT_TRUE(captureOvertaken());
}

TEST_F(OvertakenCallTest, ANoteThatTheServiceRefusedIsRefused) {
  service.answers(CAPTURE_PATH, 422, {{"error", "Participant archived"}});
  EXPECT_EQ(errorOf(captureOvertaken()), VELKError::api("Participant archived"));
}

TEST_F(OvertakenCallTest, ALateRefusalOfTheOldTokenLeavesTheNewOne) {
  service.answers(CAPTURE_PATH, 401);
  service.holdsAnswers();
  Received<std::optional<std::string>> call;
  client().captureNote("1", "x", 15, "2024-05-02", call.completion());
  client().signOut();
  Received<void> signedIn;
  client().login("ada@velk.example", "correct horse", signedIn.completion());
  service.releases(1);
  service.releasesAll();
  EXPECT_EQ(errorOf(call.only()), VELKError::network("Authorisation expired — will retry"));
  service.forgetRequests();
  EXPECT_TRUE(fetch());
  EXPECT_THAT(service.trail(), ElementsAre("GET /api/desktop/participants"));
}

TEST_F(OvertakenCallTest, CallsThatWaitForTheirTurnEndWithoutARequest) {
  service.holdsAnswers();
  std::vector<Received<std::optional<std::string>>> calls(9);
  for (auto& call : calls) {
    client().captureNote("1", "x", 15, "2024-05-02", call.completion());
  }
  client().signOut();
  EXPECT_FALSE(calls[6].arrived()) << "not inside the call to sign out";
  loop.runPosted();
  for (std::size_t waiting = 6; waiting < 9; ++waiting) {
    EXPECT_EQ(errorOf(calls[waiting].only()), OVERTAKEN);
  }
  service.releasesAll();
  for (std::size_t sent = 0; sent < 6; ++sent) EXPECT_TRUE(calls[sent].only());
  EXPECT_THAT(service.requestsTo(CAPTURE_PATH), SizeIs(6));
}

// --- Sign-ins under way --------------------------------------------------------------------------

TEST_F(SignOutTest, ASignInThatASignOutOvertakesIsNotTaken) {
  service.holdsAnswers();
  Received<void> signedIn;
  client().login("ada@velk.example", "correct horse", signedIn.completion());
  client().signOut();
  service.releasesAll();
  EXPECT_EQ(errorOf(signedIn.only()), OVERTAKEN);
  EXPECT_FALSE(client().isSignedIn());
}

TEST_F(SignOutTest, OfTwoSignInsTheOneStartedLastCounts) {
  for (const std::size_t first : {0u, 1u}) {
    service.holdsAnswers();
    Received<void> older;
    Received<void> newer;
    client().login("ada@velk.example", "correct horse", older.completion());
    client().login("ada@velk.example", "correct horse", newer.completion());
    service.releases(first);
    service.releasesAll();
    EXPECT_TRUE(newer.only());
    EXPECT_EQ(secrets.refreshToken(), first == 0 ? "refresh-2" : "refresh-4");
  }
}

}  // namespace
}  // namespace notewick
