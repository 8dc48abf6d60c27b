#include "client/velk_client.h"
#include "tests/client/client_world.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;
using testing::UnorderedElementsAre;

const std::string EMAIL_KEY = "VELKUserEmail";

json tokens(const json& more = json::object()) {
  json all = {{"accessToken", "A"}, {"refreshToken", "R"}};
  all.update(more);
  return all;
}

class SignInTest : public ClientTest {
 protected:
  /// Signs in with an answer of these keys besides the tokens.
  void signsInWith(const json& more) {
    EXPECT_EQ(errorAfter(LOGIN_PATH, 200, tokens(more)), std::nullopt);
  }
};

// --- Signing in ----------------------------------------------------------------------------------

TEST_F(SignInTest, KeepsTheRefreshTokenAndTheEmailButNotTheAccessToken) {
  EXPECT_TRUE(login());
  EXPECT_TRUE(client().isSignedIn());
  EXPECT_EQ(client().userEmail(), "ada@velk.example");
  EXPECT_THAT(secrets.writes, ElementsAre("save refresh-1"));
  EXPECT_THAT(defaults.values, UnorderedElementsAre(Pair(EMAIL_KEY, testing::_)));
  EXPECT_THAT(trace, IsEmpty()) << "nothing is written to a file";
  EXPECT_EQ(sentByACall(), NOT_REFRESHED);
  EXPECT_EQ(service.requests.front().authorization(), "Bearer access-1");
}

TEST_F(SignInTest, AUserInTheAnswerReplacesTheStoredEmail) {
  signsInWith({{"user", {{"email", "bo@velk.example"}}}});
  EXPECT_EQ(client().userEmail(), "bo@velk.example");
  signsInWith(json::object());
  EXPECT_EQ(client().userEmail(), "bo@velk.example") << "no user in the answer";
  signsInWith({{"user", json::object()}});
  EXPECT_FALSE(defaults.values.contains(EMAIL_KEY)) << "a user without an e-mail";
}

TEST_F(SignInTest, AnAnswerWithoutBothTokensIsARefusalThatTouchesNothing) {
  hasFreshToken();
  for (const json& body : {json{{"accessToken", "A"}}, json{{"refreshToken", "R"}}})
    EXPECT_EQ(errorAfter(LOGIN_PATH, 200, body), VELKError::api("Sign-in failed (200)"));
  EXPECT_EQ(secrets.refreshToken(), "refresh-1");
  EXPECT_EQ(client().userEmail(), "ada@velk.example");
  EXPECT_EQ(sentByACall(), NOT_REFRESHED);
}

// --- When a token expires ------------------------------------------------------------------------

class ExpiryTest : public SignInTest {
 protected:
  ExpiryTest() { service.answers(200, tokens({{"participants", json::array()}})); }

  /// Signs in, and has the token last more than a minute for just so many seconds.
  void expectUsedFor(double seconds, const json& answer) {
    signsInWith(answer);
    clock.jump(seconds - 1);
    EXPECT_EQ(sentByACall(), NOT_REFRESHED) << answer;
    clock.jump(1);
    EXPECT_EQ(sentByACall(), REFRESHED_FIRST) << answer;
  }

  /// Seconds since 1970 of the moment so many seconds from now.
  [[nodiscard]] double unixTimeIn(double seconds) const {
    return clock.now().count() + SECONDS_FROM_1970_TO_2001 + seconds;
  }
};

TEST_F(ExpiryTest, ATokenIsUsedUntilAMinuteBeforeItExpiresOrFor49MinutesWithoutAnExpiry) {
  expectUsedFor(940, {{"expiresAt", unixTimeIn(1000)}});
  expectUsedFor(940, {{"expiresAt", std::int64_t(unixTimeIn(1000))}});
  expectUsedFor(2940, json::object());
}

TEST_F(ExpiryTest, AnExpiryMayBeAnyMoment) {
  signsInWith({{"expiresAt", -5}});
  EXPECT_EQ(sentByACall(), REFRESHED_FIRST);
  signsInWith({{"expiresAt", 1e300}});
  EXPECT_EQ(sentByACall(), NOT_REFRESHED);
}

// --- Refreshing ----------------------------------------------------------------------------------

class RefreshTest : public SignInTest {
 protected:
  RefreshTest() { signIn(); }
};

TEST_F(RefreshTest, ReplacesTheStoredTokenAndUsesTheNewOne) {
  EXPECT_EQ(sentByACall(), REFRESHED_FIRST);
  EXPECT_EQ(secrets.refreshToken(), "refresh-2");
  EXPECT_EQ(secrets.size(), 1u);
  EXPECT_EQ(service.requests.back().authorization(), "Bearer access-2");
  EXPECT_EQ(sentByACall(), NOT_REFRESHED);
}

TEST_F(RefreshTest, KeepsTheStoredEmail) {
  (void)errorAfter(REFRESH_PATH, 200, tokens({{"user", {{"email", "bo@velk.example"}}}}));
  EXPECT_EQ(client().userEmail(), "ada@velk.example");
}

TEST_F(RefreshTest, A401SignsTheUserOut) {
  EXPECT_EQ(errorAfter(REFRESH_PATH, 401, {{"error", "Revoked"}}), VELKError::sessionExpired());
  EXPECT_FALSE(client().isSignedIn());
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  EXPECT_FALSE(defaults.values.contains(EMAIL_KEY));
  EXPECT_THAT(service.requests, SizeIs(1));
}

TEST_F(RefreshTest, WithoutBothTokensItIsAPassingOutage) {
  for (const json& body : {json{{"accessToken", "A"}}, json{{"refreshToken", "R"}}})
    EXPECT_EQ(errorAfter(REFRESH_PATH, 200, body), VELKError::network("Refresh failed (200)"));
  EXPECT_THAT(service.requestsTo(PARTICIPANTS_PATH), IsEmpty());
}

TEST_F(RefreshTest, TwoCallsTogetherEachRefreshAndTheLastAnswerStays) {
  service.holdsAnswers();
  const auto first = startFetch();
  const auto second = startFetch();
  EXPECT_THAT(service.requestsTo(REFRESH_PATH), SizeIs(2));
  service.releases(1);
  EXPECT_EQ(secrets.refreshToken(), "refresh-3");
  service.releases(0);
  EXPECT_EQ(secrets.refreshToken(), "refresh-2");
  service.releasesAll();
  EXPECT_TRUE(first.result());
  EXPECT_TRUE(second.result());
  EXPECT_EQ(service.requests[2].authorization(), "Bearer access-3");
  EXPECT_EQ(service.requests[3].authorization(), "Bearer access-2");
}

TEST_F(RefreshTest, ATokenThatCouldNotBeSavedServesUntilItExpires) {
  client().signOut();
  secrets.failWrites = true;
  EXPECT_TRUE(login());
  EXPECT_FALSE(client().isSignedIn());
  EXPECT_EQ(sentByACall(), NOT_REFRESHED);
  clock.jump(3600);
  EXPECT_EQ(errorOf(fetch()), VELKError::notSignedIn());
}

// --- Signing out ---------------------------------------------------------------------------------

const VELKError OVERTAKEN = VELKError::network("Signed out meanwhile");
const VELKError LOST = VELKError::network("The connection was lost.");

/// A client with a fresh token, whose answers wait until a test lets them go.
class SignOutTest : public ClientTest {
 protected:
  SignOutTest() { holdsAnswersToAFreshToken(); }

  void holdsAnswersToAFreshToken() {
    service.releasesAll();
    hasFreshToken();
    service.holdsAnswers();
  }

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
  EXPECT_FALSE(defaults.values.contains(EMAIL_KEY));
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  EXPECT_THAT(service.requests, IsEmpty());
  EXPECT_EQ(startFetch().error(), VELKError::notSignedIn());
}

TEST_F(SignOutTest, WhatIsUnderWayIsOvertakenUnlessItsAnswerIsLost) {
  for (const auto path : {REFRESH_PATH, PARTICIPANTS_PATH}) {
    for (const int status : {200, 401, 403, 0}) {
      SCOPED_TRACE(std::string(path) + " " + std::to_string(status));
      holdsAnswersToAFreshToken();
      if (path == REFRESH_PATH) clock.jump(3600);
      if (status == 0) service.fails(path, LOST.message());
      if (status > 200) service.answers(path, status);
      const auto call = startFetch();
      signsOutBeforeTheAnswers();
      EXPECT_EQ(call.error(), status == 0 ? LOST : OVERTAKEN);
      EXPECT_FALSE(client().isSignedIn());
      EXPECT_THAT(service.trail(), ElementsAre(testing::EndsWith(std::string(path))));
    }
  }
}

TEST_F(SignOutTest, ARefusedRefreshLeavesANewSignInAlone) {
  clock.jump(3600);
  service.answers(REFRESH_PATH, 401);
  const auto call = startFetch();
  signsInAnew();
  const auto token = secrets.refreshToken();
  service.releasesAll();
  EXPECT_EQ(call.error(), OVERTAKEN);
  EXPECT_TRUE(client().isSignedIn());
  EXPECT_EQ(secrets.refreshToken(), token);
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
