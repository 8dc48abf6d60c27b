#include "client/velk_client.h"
#include "tests/client/client_world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const VELKError OVERTAKEN = VELKError::network("Signed out meanwhile");
const VELKError LOST = VELKError::network("The connection was lost.");

/// A client with a fresh token, whose answers wait until a test lets them go.
class SignOutTest : public ClientTest {
 protected:
  SignOutTest() {
    hasFreshToken();
    service.holdsAnswers();
  }

  void theTokenExpires() { clock.set(clock.now() + Date(3600)); }

  void signsOutBeforeTheAnswers() {
    client().signOut();
    service.releasesAll();
  }

  /// Signs out and in again while all but the sign-in has no answer yet.
  void signsInAnew() {
    client().signOut();
    const auto signedIn = startLogin();
    service.releases(service.heldAnswers() - 1);
    EXPECT_TRUE(signedIn.result());
  }
};

TEST_F(SignOutTest, SigningOutForgetsEverythingAndSendsNothing) {
  client().signOut();
  EXPECT_FALSE(client().isSignedIn());
  EXPECT_FALSE(defaults.values.contains("VELKUserEmail"));
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  EXPECT_THAT(service.requests, IsEmpty());
  EXPECT_EQ(startFetch().error(), VELKError::notSignedIn());
}

// --- A refresh under way -------------------------------------------------------------------------

TEST_F(SignOutTest, TheTokensThatARefreshBringsAreNotTaken) {
  theTokenExpires();
  const auto call = startFetch();
  signsOutBeforeTheAnswers();
  EXPECT_EQ(call.error(), OVERTAKEN);
  EXPECT_FALSE(client().isSignedIn());
  EXPECT_THAT(service.trail(), ElementsAre("POST /api/desktop/auth/refresh"));
}

TEST_F(SignOutTest, ARefusedRefreshIsNotPassedOn) {
  theTokenExpires();
  service.answers(REFRESH_PATH, 401);
  const auto call = startFetch();
  signsOutBeforeTheAnswers();
  EXPECT_EQ(call.error(), OVERTAKEN);
}

TEST_F(SignOutTest, ARefreshWithoutAnAnswerIsPassedOn) {
  theTokenExpires();
  service.fails(REFRESH_PATH, LOST.message());
  const auto call = startFetch();
  signsOutBeforeTheAnswers();
  EXPECT_EQ(call.error(), LOST);
}

TEST_F(SignOutTest, ARefusedRefreshLeavesANewSignInAlone) {
  theTokenExpires();
  service.answers(REFRESH_PATH, 401);
  const auto call = startFetch();
  signsInAnew();
  const auto token = secrets.refreshToken();
  service.releasesAll();
  EXPECT_EQ(call.error(), OVERTAKEN);
  EXPECT_TRUE(client().isSignedIn());
  EXPECT_EQ(secrets.refreshToken(), token);
}

// --- A call under way ----------------------------------------------------------------------------

TEST_F(SignOutTest, NeitherParticipantsNorTheirRefusalAreDelivered) {
  service.answers(PARTICIPANTS_PATH, 403);
  const auto refused = startFetch();
  const auto taken = startFetch();
  signsOutBeforeTheAnswers();
  EXPECT_EQ(refused.error(), OVERTAKEN);
  EXPECT_EQ(taken.error(), OVERTAKEN);
}

TEST_F(SignOutTest, ACallWithoutAnAnswerIsPassedOn) {
  service.fails(PARTICIPANTS_PATH, LOST.message());
  const auto call = startFetch();
  signsOutBeforeTheAnswers();
  EXPECT_EQ(call.error(), LOST);
}

TEST_F(SignOutTest, ANoteIsTakenOrRefusedAsTheServiceSays) {
  service.answers(CAPTURE_PATH, 422, {{"error", "Participant archived"}});
  const auto refused = startCapture();
  const auto taken = startCapture();
  signsOutBeforeTheAnswers();
  EXPECT_EQ(refused.error(), VELKError::api("Participant archived"));
  EXPECT_TRUE(taken.result());
}

TEST_F(SignOutTest, ALateRefusalOfTheOldTokenLeavesTheNewOne) {
  service.answers(CAPTURE_PATH, 401);
  const auto call = startCapture();
  signsInAnew();
  service.releasesAll();
  EXPECT_EQ(call.error(), VELKError::network("Authorisation expired — will retry"));
  EXPECT_EQ(sentByACall(), NOT_REFRESHED);
}

// --- Calls that wait for their turn --------------------------------------------------------------

class WaitingCallsTest : public SignOutTest {
 protected:
  WaitingCallsTest() {
    for (int note = 0; note < 9; ++note) calls.push_back(startCapture());
  }

  void expectOnlySixWereSent() {
    for (std::size_t waiting = 6; waiting < 9; ++waiting)
      EXPECT_EQ(calls[waiting].error(), OVERTAKEN);
    service.releasesAll();
    for (std::size_t sent = 0; sent < 6; ++sent) EXPECT_TRUE(calls[sent].result());
    EXPECT_THAT(service.requestsTo(CAPTURE_PATH), SizeIs(6));
  }

  std::vector<NoteCall> calls;
};

TEST_F(WaitingCallsTest, ASignOutEndsThemInALaterTurn) {
  client().signOut();
  EXPECT_FALSE(calls[6].isAnswered());
  loop.runPosted();
  expectOnlySixWereSent();
}

TEST_F(WaitingCallsTest, ANewSignInEndsThem) {
  (void)startLogin();
  service.releases(6);
  expectOnlySixWereSent();
}

// --- Sign-ins under way --------------------------------------------------------------------------

TEST_F(SignOutTest, ASignInThatASignOutOvertakesIsNotTaken) {
  const auto signedIn = startLogin();
  signsOutBeforeTheAnswers();
  EXPECT_EQ(signedIn.error(), OVERTAKEN);
  EXPECT_FALSE(client().isSignedIn());
}

TEST_F(SignOutTest, OfTwoSignInsTheOneStartedLastCounts) {
  for (const std::size_t answeredFirst : {0u, 1u}) {
    service.holdsAnswers();
    const auto older = startLogin();
    const auto newer = startLogin();
    service.releases(answeredFirst);
    service.releasesAll();
    EXPECT_TRUE(newer.result());
    EXPECT_EQ(older.error(), answeredFirst == 0 ? std::nullopt : std::optional(OVERTAKEN));
    EXPECT_EQ(secrets.refreshToken(), answeredFirst == 0 ? "refresh-3" : "refresh-5");
  }
}

}  // namespace
}  // namespace notewick
