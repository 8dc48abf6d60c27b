#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "client/velk_client.h"
#include "tests/support/client_world.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;
using testing::UnorderedElementsAre;

const std::string EMAIL_KEY = "VELKUserEmail";
const std::vector<std::string> REFRESHED_FIRST = {"POST /api/desktop/auth/refresh",
                                                  "GET /api/desktop/participants"};
const std::vector<std::string> NOT_REFRESHED = {"GET /api/desktop/participants"};

class SignInTest : public ClientTest {
 protected:
  static json tokens(const json& more = json::object()) {
    json all = {{"accessToken", "A"}, {"refreshToken", "R"}};
    all.update(more);
    return all;
  }

  /// Signs in with an answer of these keys besides the tokens.
  void signsInWith(const json& more) {
    service.answers(LOGIN_PATH, 200, tokens(more));
    EXPECT_TRUE(login());
    service.forgetRequests();
  }

  /// Seconds since 1970 of the moment so many seconds from now.
  [[nodiscard]] double unixTimeIn(double seconds) const {
    return clock.now().count() + SECONDS_FROM_1970_TO_2001 + seconds;
  }

  /// What the next call for participants sends.
  std::vector<std::string> sentByACall() {
    service.forgetRequests();
    (void)fetch();
    return service.trail();
  }
};

// --- Signing in ----------------------------------------------------------------------------------

TEST_F(SignInTest, SendsExactlyThis) {
  EXPECT_TRUE(login("ada@velk.example", "correct horse"));
  ASSERT_THAT(service.requests, SizeIs(1));
  const auto& request = service.requests.front();
  EXPECT_EQ(request.method, "POST");
  EXPECT_EQ(request.url, "https://velk.example/api/desktop/auth/login");
  EXPECT_THAT(request.headers,
              UnorderedElementsAre(Pair("Content-Type", "application/json"),
                                   Pair("User-Agent", "velk-notewick/1.0 (macOS)")));
  EXPECT_EQ(request.json(), json({{"email", "ada@velk.example"}, {"password", "correct horse"}}));
  EXPECT_EQ(request.timeout, 60);
}

TEST_F(SignInTest, CredentialsTravelAsTheyStand) {
  (void)login(" ada@velk.example ", " p\"w\\ö ");
  EXPECT_EQ(service.requests.front().json(),
            json({{"email", " ada@velk.example "}, {"password", " p\"w\\ö "}}));
}

TEST_F(SignInTest, CarriesNoAuthorizationEvenWithAToken) {
  hasFreshToken();
  EXPECT_TRUE(login());
  EXPECT_EQ(authorizationOf(0), "none");
}

TEST_F(SignInTest, StoresTheRefreshTokenAndTheEmail) {
  EXPECT_TRUE(login());
  EXPECT_EQ(secrets.refreshToken(), "refresh-1");
  EXPECT_EQ(client().userEmail(), "ada@velk.example");
  EXPECT_TRUE(client().isSignedIn());
}

TEST_F(SignInTest, TheAccessTokenIsStoredNowhere) {
  EXPECT_TRUE(login());
  EXPECT_THAT(secrets.writes, ElementsAre("save refresh-1"));
  EXPECT_THAT(defaults.values, UnorderedElementsAre(Pair(EMAIL_KEY, testing::_)));
  EXPECT_THAT(trace, IsEmpty());
}

TEST_F(SignInTest, TheAccessTokenServesTheNextCall) {
  hasFreshToken();
  EXPECT_TRUE(fetch());
  EXPECT_THAT(service.trail(), testing::ElementsAreArray(NOT_REFRESHED));
  EXPECT_EQ(authorizationOf(0), "Bearer access-1");
}

TEST_F(SignInTest, AnEmailInTheAnswerIsStored) {
  signsInWith({{"user", {{"email", "bo@velk.example"}}}});
  EXPECT_EQ(client().userEmail(), "bo@velk.example");
}

TEST_F(SignInTest, AUserWithoutEmailRemovesTheStoredOne) {
  for (const json& user : {json::object(), json({{"email", 7}}), json({{"email", nullptr}})}) {
    client().setUserEmail("old@velk.example");
    signsInWith({{"user", user}});
    EXPECT_EQ(client().userEmail(), std::nullopt) << user;
    EXPECT_FALSE(defaults.values.contains(EMAIL_KEY)) << user;
  }
}

TEST_F(SignInTest, AnAnswerWithoutAUserKeepsTheStoredEmail) {
  client().setUserEmail("old@velk.example");
  signsInWith(json::object());
  EXPECT_EQ(client().userEmail(), "old@velk.example");
  for (const json& user : {json("bo@velk.example"), json(nullptr), json::array()}) {
    signsInWith({{"user", user}});
    EXPECT_EQ(client().userEmail(), "old@velk.example") << user;
  }
}

TEST_F(SignInTest, ARefusalTellsTheServicesReason) {
  EXPECT_EQ(errorOf(login("ada@velk.example", "wrong")),
            VELKError::wrongCredentials("Invalid email or password"));
}

TEST_F(SignInTest, ARefusalWithoutReasonTellsTheStatus) {
  for (const int status : {201, 302, 400, 401, 429, 500, 503}) {
    service.answers(LOGIN_PATH, status);
    EXPECT_EQ(errorOf(login()), VELKError::api("Sign-in failed (" + std::to_string(status) + ")"));
  }
}

TEST_F(SignInTest, TokensWithAnotherStatusAreNotTaken) {
  service.answers(LOGIN_PATH, 201, tokens());
  EXPECT_EQ(errorOf(login()), VELKError::api("Sign-in failed (201)"));
  EXPECT_FALSE(client().isSignedIn());
}

TEST_F(SignInTest, AnAnswerLackingATokenIsARefusal) {
  for (const json& body :
       {json({{"accessToken", "A"}}), json({{"refreshToken", "R"}}), json::object(),
        tokens({{"accessToken", 7}}), tokens({{"refreshToken", nullptr}})}) {
    service.answers(LOGIN_PATH, 200, body);
    EXPECT_EQ(errorOf(login()), VELKError::api("Sign-in failed (200)")) << body;
    EXPECT_FALSE(client().isSignedIn());
  }
}

TEST_F(SignInTest, NoAnswerIsANetworkError) {
  service.fails(LOGIN_PATH, "Could not connect");
  EXPECT_EQ(errorOf(login()), VELKError::network("Could not connect"));
  service.answersNoHttp(LOGIN_PATH);
  EXPECT_EQ(errorOf(login()), VELKError::network("No response"));
}

TEST_F(SignInTest, AFailedSignInTouchesNothing) {
  hasFreshToken();
  EXPECT_FALSE(login("ada@velk.example", "wrong"));
  EXPECT_EQ(secrets.refreshToken(), "refresh-1");
  EXPECT_EQ(client().userEmail(), "ada@velk.example");
  EXPECT_EQ(sentByACall(), NOT_REFRESHED);
}

// --- When a token expires ------------------------------------------------------------------------

class ExpiryTest : public SignInTest {
 protected:
  ExpiryTest() { service.answers(200, tokens({{"participants", json::array()}})); }
};

TEST_F(ExpiryTest, AnExpirySixtySecondsAheadIsTooNear) {
  signsInWith({{"expiresAt", unixTimeIn(60)}});
  EXPECT_EQ(sentByACall(), REFRESHED_FIRST);
}

TEST_F(ExpiryTest, AnExpirySixtyOneSecondsAheadIsNot) {
  signsInWith({{"expiresAt", unixTimeIn(61)}});
  EXPECT_EQ(sentByACall(), NOT_REFRESHED);
}

TEST_F(ExpiryTest, AnExpiryMayBeAnIntegerOrAFraction) {
  for (const double lifetime : {1000.0, 999.75}) {
    const double expiry = unixTimeIn(lifetime);
    const bool whole = std::trunc(expiry) == expiry;
    signsInWith({{"expiresAt", whole ? json(std::int64_t(expiry)) : json(expiry)}});
    clock.set(clock.now() + Date(939));
    EXPECT_EQ(sentByACall(), NOT_REFRESHED) << lifetime;
    clock.set(clock.now() + Date(1));
    EXPECT_EQ(sentByACall(), REFRESHED_FIRST) << lifetime;
  }
}

TEST_F(ExpiryTest, WithoutANumberATokenLastsFiftyMinutes) {
  for (const json& more : {json::object(), json({{"expiresAt", nullptr}}),
                           json({{"expiresAt", "2030-01-01"}}), json({{"expiresAt", true}})}) {
    signsInWith(more);
    clock.set(clock.now() + Date(2939));
    EXPECT_EQ(sentByACall(), NOT_REFRESHED) << more;
    clock.set(clock.now() + Date(1));
    EXPECT_EQ(sentByACall(), REFRESHED_FIRST) << more;
  }
}

TEST_F(ExpiryTest, AnExpiryInThePastMeansARefresh) {
  for (const json& expiry : {json(0), json(-5), json(unixTimeIn(-1))}) {
    signsInWith({{"expiresAt", expiry}});
    EXPECT_EQ(sentByACall(), REFRESHED_FIRST) << expiry;
  }
}

TEST_F(ExpiryTest, AnExpiryBeyondReasonIsFarAway) {
  signsInWith({{"expiresAt", 1e300}});
  EXPECT_EQ(sentByACall(), NOT_REFRESHED);
  signsInWith({{"expiresAt", std::numeric_limits<std::uint64_t>::max()}});
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

TEST_F(RefreshTest, SendsExactlyThis) {
  EXPECT_TRUE(fetch());
  EXPECT_EQ(service.trail(), REFRESHED_FIRST);
  const auto& request = service.requests.front();
  EXPECT_EQ(request.url, "https://velk.example/api/desktop/auth/refresh");
  EXPECT_THAT(request.headers,
              UnorderedElementsAre(Pair("Content-Type", "application/json"),
                                   Pair("User-Agent", "velk-notewick/1.0 (macOS)")));
  EXPECT_EQ(request.json(), json({{"refreshToken", "refresh-1"}}));
  EXPECT_EQ(request.timeout, 60);
}

TEST_F(RefreshTest, ReplacesTheStoredTokenAndUsesTheNewOne) {
  EXPECT_TRUE(fetch());
  EXPECT_EQ(secrets.refreshToken(), "refresh-2");
  EXPECT_EQ(secrets.size(), 1u);
  EXPECT_EQ(authorizationOf(1), "Bearer access-2");
}

TEST_F(RefreshTest, KeepsTheStoredEmail) {
  service.answers(REFRESH_PATH, 200, tokens({{"user", {{"email", "bo@velk.example"}}}}));
  (void)fetch();
  EXPECT_EQ(client().userEmail(), "ada@velk.example");
}

TEST_F(RefreshTest, A401SignsTheUserOut) {
  EXPECT_EQ(errorAfter(401, {{"error", "Revoked"}}), VELKError::sessionExpired());
  EXPECT_FALSE(client().isSignedIn());
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  EXPECT_FALSE(defaults.values.contains(EMAIL_KEY));
  EXPECT_THAT(service.trail(), ElementsAre("POST /api/desktop/auth/refresh"));
}

TEST_F(RefreshTest, AnyOtherFailureIsAPassingOutage) {
  for (const int status : {201, 204, 302, 400, 403, 404, 429, 500, 503}) {
    EXPECT_EQ(errorAfter(status),
              VELKError::network("Refresh failed (" + std::to_string(status) + ")"));
    EXPECT_EQ(errorAfter(status, {{"error", "Maintenance"}}), VELKError::network("Maintenance"));
  }
  EXPECT_EQ(secrets.refreshToken(), "refresh-1");
  EXPECT_EQ(client().userEmail(), "ada@velk.example");
}

TEST_F(RefreshTest, AnAnswerLackingATokenIsAPassingOutage) {
  EXPECT_EQ(errorAfter(200, {{"accessToken", "A"}}), VELKError::network("Refresh failed (200)"));
  EXPECT_EQ(errorAfter(200, {{"refreshToken", "R"}}), VELKError::network("Refresh failed (200)"));
  EXPECT_EQ(secrets.refreshToken(), "refresh-1");
}

TEST_F(RefreshTest, NoAnswerIsANetworkErrorAndClearsNothing) {
  service.fails(REFRESH_PATH, "offline");
  EXPECT_EQ(errorOf(fetch()), VELKError::network("offline"));
  EXPECT_EQ(secrets.refreshToken(), "refresh-1");
  EXPECT_THAT(service.trail(), ElementsAre("POST /api/desktop/auth/refresh"));
}

TEST_F(RefreshTest, TwoCallsTogetherEachRefreshAndTheLastAnswerStays) {
  service.holdsAnswers();
  Received<std::vector<Participant>> first;
  Received<std::vector<Participant>> second;
  client().fetchParticipants(first.completion());
  client().fetchParticipants(second.completion());
  EXPECT_THAT(service.trail(),
              ElementsAre("POST /api/desktop/auth/refresh", "POST /api/desktop/auth/refresh"));
  service.releases(1);
  EXPECT_EQ(secrets.refreshToken(), "refresh-3");
  service.releases(0);
  EXPECT_EQ(secrets.refreshToken(), "refresh-2");
  service.releasesAll();
  EXPECT_TRUE(first.only());
  EXPECT_TRUE(second.only());
  EXPECT_EQ(authorizationOf(2), "Bearer access-3");
  EXPECT_EQ(authorizationOf(3), "Bearer access-2");
}

TEST_F(RefreshTest, FiftyCallsTogetherLeaveTheUserSignedIn) {
  std::vector<Received<std::vector<Participant>>> all(50);
  for (auto& received : all) client().fetchParticipants(received.completion());
  loop.runPosted();
  for (const auto& received : all) EXPECT_TRUE(received.only());
  clock.set(clock.now() + Date(4000));
  EXPECT_TRUE(fetch());
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
