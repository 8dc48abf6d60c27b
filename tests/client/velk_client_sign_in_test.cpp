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
  /// What signing in ends in when the service answers so.
  std::optional<VELKError> errorAfter(int status, const json& body = json::object()) {
    service.answers(LOGIN_PATH, status, body);
    return errorOf(login());
  }

  /// Signs in with an answer of these keys besides the tokens.
  void signsInWith(const json& more) { EXPECT_EQ(errorAfter(200, tokens(more)), std::nullopt); }
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
  EXPECT_EQ(authorizationOf(0), "Bearer access-1");
}

TEST_F(SignInTest, AUserInTheAnswerReplacesTheStoredEmail) {
  signsInWith({{"user", {{"email", "bo@velk.example"}}}});
  EXPECT_EQ(client().userEmail(), "bo@velk.example");
  signsInWith(json::object());
  EXPECT_EQ(client().userEmail(), "bo@velk.example") << "no user in the answer";
  signsInWith({{"user", json::object()}});
  EXPECT_FALSE(defaults.values.contains(EMAIL_KEY)) << "a user without an e-mail";
}

TEST_F(SignInTest, EveryOtherAnswerIsARefusal) {
  for (const int status : {199, 201, 401, 429, 500}) {
    const auto code = std::to_string(status);
    EXPECT_EQ(errorAfter(status, tokens()), VELKError::api("Sign-in failed (" + code + ")"));
    EXPECT_EQ(errorAfter(status, {{"error", "Closed"}}), VELKError::api("Closed"));
  }
  EXPECT_EQ(errorAfter(200, {{"accessToken", "A"}}), VELKError::api("Sign-in failed (200)"));
  EXPECT_EQ(errorAfter(200, {{"refreshToken", "R"}}), VELKError::api("Sign-in failed (200)"));
  EXPECT_EQ(errorAfter(200, {{"error", "Closed"}}), VELKError::api("Closed"));
  EXPECT_FALSE(client().isSignedIn());
}

TEST_F(SignInTest, WrongCredentialsAreMarked) {
  const auto call = startLogin("ada@velk.example", "wrong");
  loop.runPosted();
  EXPECT_EQ(call.error(), VELKError::wrongCredentials("Invalid email or password"));
}

TEST_F(SignInTest, NoAnswerIsANetworkError) {
  service.fails(LOGIN_PATH, "Could not connect");
  EXPECT_EQ(errorOf(login()), VELKError::network("Could not connect"));
  service.answersNoHttp(LOGIN_PATH);
  EXPECT_EQ(errorOf(login()), VELKError::network("No response"));
}

TEST_F(SignInTest, AFailedSignInTouchesNothing) {
  hasFreshToken();
  EXPECT_TRUE(errorAfter(401));
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
    clock.set(clock.now() + Date(seconds - 1));
    EXPECT_EQ(sentByACall(), NOT_REFRESHED) << answer;
    clock.set(clock.now() + Date(1));
    EXPECT_EQ(sentByACall(), REFRESHED_FIRST) << answer;
  }

  /// Seconds since 1970 of the moment so many seconds from now.
  [[nodiscard]] double unixTimeIn(double seconds) const {
    return clock.now().count() + SECONDS_FROM_1970_TO_2001 + seconds;
  }
};

TEST_F(ExpiryTest, ATokenIsUsedUntilAMinuteBeforeItExpires) {
  expectUsedFor(940, {{"expiresAt", unixTimeIn(1000)}});
  expectUsedFor(940, {{"expiresAt", std::int64_t(unixTimeIn(1000))}});
}

TEST_F(ExpiryTest, WithoutAnExpiryATokenLastsFiftyMinutes) {
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

  /// What a call for participants ends in when its refresh is answered so.
  std::optional<VELKError> errorAfter(int status, const json& body = json::object()) {
    service.answers(REFRESH_PATH, status, body);
    return errorOf(fetch());
  }
};

TEST_F(RefreshTest, ReplacesTheStoredTokenAndUsesTheNewOne) {
  EXPECT_EQ(sentByACall(), REFRESHED_FIRST);
  EXPECT_EQ(secrets.refreshToken(), "refresh-2");
  EXPECT_EQ(secrets.size(), 1u);
  EXPECT_EQ(authorizationOf(1), "Bearer access-2");
  EXPECT_EQ(sentByACall(), NOT_REFRESHED);
}

TEST_F(RefreshTest, KeepsTheStoredEmail) {
  (void)errorAfter(200, tokens({{"user", {{"email", "bo@velk.example"}}}}));
  EXPECT_EQ(client().userEmail(), "ada@velk.example");
}

TEST_F(RefreshTest, A401SignsTheUserOut) {
  EXPECT_EQ(errorAfter(401, {{"error", "Revoked"}}), VELKError::sessionExpired());
  EXPECT_FALSE(client().isSignedIn());
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  EXPECT_FALSE(defaults.values.contains(EMAIL_KEY));
  EXPECT_THAT(service.requests, SizeIs(1));
}

TEST_F(RefreshTest, EveryOtherFailureIsAPassingOutage) {
  for (const int status : {199, 201, 400, 402, 500}) {
    const auto code = std::to_string(status);
    EXPECT_EQ(errorAfter(status, tokens()), VELKError::network("Refresh failed (" + code + ")"));
    EXPECT_EQ(errorAfter(status, {{"error", "Closed"}}), VELKError::network("Closed"));
  }
  EXPECT_EQ(errorAfter(200, {{"accessToken", "A"}}), VELKError::network("Refresh failed (200)"));
  EXPECT_EQ(errorAfter(200, {{"refreshToken", "R"}}), VELKError::network("Refresh failed (200)"));
  service.fails(REFRESH_PATH, "offline");
  EXPECT_EQ(errorOf(fetch()), VELKError::network("offline"));
  EXPECT_EQ(secrets.refreshToken(), "refresh-1");
  EXPECT_EQ(client().userEmail(), "ada@velk.example");
  EXPECT_TRUE(service.requestsTo(PARTICIPANTS_PATH).empty());
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
  EXPECT_EQ(authorizationOf(2), "Bearer access-3");
  EXPECT_EQ(authorizationOf(3), "Bearer access-2");
}

TEST_F(RefreshTest, ATokenThatCouldNotBeSavedServesUntilItExpires) {
  client().signOut();
  secrets.failWrites = true;
  EXPECT_TRUE(login());
  EXPECT_FALSE(client().isSignedIn());
  EXPECT_EQ(sentByACall(), NOT_REFRESHED);
  clock.set(clock.now() + Date(3600));
  EXPECT_EQ(errorOf(fetch()), VELKError::notSignedIn());
}

}  // namespace
}  // namespace notewick
