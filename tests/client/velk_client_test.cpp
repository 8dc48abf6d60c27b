#include "client/velk_client.h"

#include "tests/client/client_world.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::IsEmpty;
using testing::SizeIs;

class VelkClientTest : public ClientTest {
 protected:
  VelkClientTest() { hasFreshToken(); }

  [[nodiscard]] const ReceivedRequest& lastRequest() const { return service.requests.back(); }
};

// --- The wire ------------------------------------------------------------------------------------

class WireTest : public VelkClientTest {
 protected:
  void expectSent(const ReceivedRequest& request, const std::string& methodAndPath,
                  const std::optional<std::string>& body,
                  const std::optional<std::string>& authorization) {
    std::vector<std::pair<std::string, std::string>> headers = {
        {"Content-Type", "application/json"}, {"User-Agent", "velk-notewick/1.0 (macOS)"}};
    if (authorization) headers.emplace_back("Authorization", *authorization);
    EXPECT_EQ(request.method + " " + request.path, methodAndPath);
    EXPECT_EQ(request.url, "https://velk.example" + request.path);
    EXPECT_THAT(request.headers, testing::UnorderedElementsAreArray(headers));
    EXPECT_EQ(request.body, body);
    EXPECT_EQ(request.timeout, 60);
  }
};

TEST_F(WireTest, EachCallSendsExactlyThisThroughOneSession) {
  EXPECT_TRUE(login());
  EXPECT_TRUE(fetch());
  advance(3600);
  EXPECT_TRUE(capture());
  ASSERT_THAT(service.requests, SizeIs(4));
  expectSent(service.requests[0], "POST /api/desktop/auth/login",
             R"({"email":"ada@velk.example","password":"correct horse"})", std::nullopt);
  expectSent(service.requests[1], "GET /api/desktop/participants", std::nullopt, "Bearer access-2");
  expectSent(service.requests[2], "POST /api/desktop/auth/refresh",
             R"({"refreshToken":"refresh-2"})", std::nullopt);
  expectSent(
      service.requests[3], "POST /api/desktop/case-notes/capture",
      R"({"durationMinutes":30,"input":"Phoned","participantId":"2","sessionDate":"2024-05-01"})",
      "Bearer access-3");
  ASSERT_THAT(service.sessions, SizeIs(1));
  EXPECT_EQ(service.sessions.front().requestTimeout, 90);
}

TEST_F(WireTest, WhatTheUserTypedTravelsToTheCharacterAndBrokenTextRepaired) {
  const std::string typed = " She said \"yes\"\\\n\tFinally – 👩‍👧 e\u0301 ";
  (void)startLogin(typed, typed);
  EXPECT_EQ(lastRequest().json(), json({{"email", typed}, {"password", typed}}));
  (void)startCapture(typed + "\xC3");
  EXPECT_EQ(lastRequest().json()["input"], typed + "\uFFFD");
}

TEST_F(WireTest, TheBaseUrlIsReadAnewForEveryRequest) {
  defaults.setString("VELKBaseURL", "http://127.0.0.1:8080/velk/");
  EXPECT_TRUE(fetch());
  EXPECT_EQ(lastRequest().url, "http://127.0.0.1:8080/velk/api/desktop/participants");
  defaults.remove("VELKBaseURL");
  EXPECT_TRUE(fetch());
  EXPECT_EQ(lastRequest().url, "https://velk.example/api/desktop/participants");
}

TEST_F(WireTest, NothingIsSentToAnAddressThatIsNotSecure) {
  defaults.setString("VELKBaseURL", "http://velk.example");
  for (const auto path : {LOGIN_PATH, PARTICIPANTS_PATH, CAPTURE_PATH})
    EXPECT_EQ(errorOfCallTo(path), VELKError::network("The address is not secure.")) << path;
  EXPECT_THAT(service.requests, IsEmpty());
  defaults.setString("VELKBaseURL", "http://127.0.0.1:8080");
  EXPECT_EQ(sentByACall(), NOT_REFRESHED) << "the user is still signed in";
}

// --- What an answer means ------------------------------------------------------------------------

TEST_F(VelkClientTest, AnAnswerWithoutAListOfParticipantsIsMalformed) {
  EXPECT_EQ(errorAfter(PARTICIPANTS_PATH, 200), VELKError::api("Malformed participants response"));
}

TEST_F(VelkClientTest, ACaptureDeliversTheServicesIdIfAny) {
  EXPECT_EQ(capture().value(), "note-1");
  service.answersWithoutBody(CAPTURE_PATH, 200);
  EXPECT_EQ(capture().value(), std::nullopt);
}

TEST_F(VelkClientTest, AnyOtherStatusIsARefusalOrAPassingOutage) {
  const struct {
    std::string_view path;
    std::vector<int> statuses;
    VELKError (*error)(std::string message);
    std::string text;
  } rows[] = {
      {CAPTURE_PATH,
       {199, 201, 204, 302, 400, 402, 403, 428, 430, 499, 600},
       VELKError::api,
       "Request failed"},
      {CAPTURE_PATH, {429, 500, 599}, VELKError::network, "Server busy"},
      {LOGIN_PATH, {199, 201, 401, 429, 500}, VELKError::api, "Sign-in failed"},
      {REFRESH_PATH, {199, 201, 400, 402, 500}, VELKError::network, "Refresh failed"},
  };
  const json tokens = {{"accessToken", "A"}, {"refreshToken", "R"}};
  for (const auto& [path, statuses, error, text] : rows) {
    advance(path == REFRESH_PATH ? 3600 : 0);
    for (const int status : statuses) {
      EXPECT_EQ(errorAfter(path, status, tokens),
                error(text + " (" + std::to_string(status) + ")"));
      EXPECT_EQ(errorAfter(path, status, {{"error", "Closed"}}), error("Closed")) << status;
    }
  }
  EXPECT_EQ(secrets.refreshToken(), "refresh-1");
  EXPECT_EQ(client().userEmail(), "ada@velk.example");
}

TEST_F(VelkClientTest, NoAnswerIsANetworkErrorOfEveryCall) {
  for (const auto path : {LOGIN_PATH, PARTICIPANTS_PATH, CAPTURE_PATH, REFRESH_PATH}) {
    advance(path == REFRESH_PATH ? 3600 : 0);
    service.fails(path, "The request timed out.");
    EXPECT_EQ(errorOfCallTo(path), VELKError::network("The request timed out.")) << path;
    service.answersNoHttp(path);
    EXPECT_EQ(errorOfCallTo(path), VELKError::network("No response")) << path;
  }
}

// --- Authorisation -------------------------------------------------------------------------------

TEST_F(VelkClientTest, AfterA401OnlyTheNextCallRefreshes) {
  EXPECT_EQ(errorAfter(CAPTURE_PATH, 401, {{"error", "Token revoked"}}),
            VELKError::network("Authorisation expired — will retry"));
  EXPECT_THAT(service.requests, SizeIs(1)) << "it does not try again by itself";
  EXPECT_TRUE(client().isSignedIn());
  EXPECT_EQ(client().userEmail(), "ada@velk.example");
  EXPECT_EQ(sentByACall(), REFRESHED_FIRST);
  EXPECT_EQ(lastRequest().authorization(), "Bearer access-2");
}

TEST_F(VelkClientTest, OtherFailuresKeepTheAccessToken) {
  for (const int status : {400, 402, 429, 503}) EXPECT_TRUE(errorAfter(CAPTURE_PATH, status));
  service.fails(CAPTURE_PATH, "offline");
  EXPECT_FALSE(capture());
  EXPECT_EQ(sentByACall(), NOT_REFRESHED);
}

TEST_F(VelkClientTest, WhileTheStoreIsLockedACallMayPassLater) {
  VELKClient::releaseShared();
  secrets.locked = true;
  EXPECT_EQ(errorOf(fetch()), VELKError::network("The password store is locked"));
  EXPECT_TRUE(client().isSignedIn());
  EXPECT_THAT(service.requests, IsEmpty());
}

// --- Lifetime ------------------------------------------------------------------------------------

TEST_F(VelkClientTest, ManyCallsWithAStaleTokenRefreshSixTimesAtMost) {
  advance(3600);
  std::vector<ParticipantsCall> calls;
  for (int number = 0; number < 20; ++number) calls.push_back(startFetch());
  loop.runPosted();
  for (const auto& call : calls) EXPECT_TRUE(call.result());
  EXPECT_THAT(service.requestsTo(REFRESH_PATH), SizeIs(6));
}

TEST_F(VelkClientTest, AClientThatIsGoneAnswersNobody) {
  const auto call = startFetch();
  VELKClient::releaseShared();
  loop.runPosted();
  EXPECT_FALSE(call.isAnswered());
}

TEST_F(VelkClientTest, ThereIsOneClientAndItsAccessTokenEndsWithIt) {
  EXPECT_EQ(&VELKClient::shared(), &VELKClient::shared());
  VELKClient::releaseShared();
  EXPECT_EQ(sentByACall(), REFRESHED_FIRST);
}

}  // namespace
}  // namespace notewick
