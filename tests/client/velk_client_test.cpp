#include "client/velk_client.h"

#include "tests/client/client_world.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const VELKError AUTHORISATION_EXPIRED = VELKError::network("Authorisation expired — will retry");

std::string coded(const std::string& text, int status) {
  return text + " (" + std::to_string(status) + ")";
}

class VelkClientTest : public ClientTest {
 protected:
  VelkClientTest() {
    knows({"Tobias Hargreave", "Lena O'Keefe"});
    hasFreshToken();
  }

  [[nodiscard]] const ReceivedRequest& lastRequest() const { return service.requests.back(); }

  /// What handing over a note ends in when the service answers so.
  std::optional<VELKError> errorAfter(int status, const json& body = json::object()) {
    service.answers(CAPTURE_PATH, status, body);
    return errorOf(capture());
  }
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

TEST_F(WireTest, EachCallSendsExactlyThis) {
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
}

TEST_F(WireTest, WhatTheUserTypedTravelsToTheCharacter) {
  const std::string typed = " She said \"yes\"\\\n\tFinally – 👩‍👧 e\u0301 ";
  (void)startLogin(typed, typed);
  (void)startCapture(typed);
  EXPECT_EQ(service.requests[0].json(), json({{"email", typed}, {"password", typed}}));
  EXPECT_EQ(service.requests[1].json()["input"], typed);
}

TEST_F(WireTest, BrokenTextIsRepairedOnTheWay) {
  (void)startCapture("cut \xC3");
  EXPECT_EQ(lastRequest().json()["input"], "cut \uFFFD");
}

TEST_F(WireTest, AllCallsGoThroughOneSession) {
  EXPECT_TRUE(fetch());
  EXPECT_TRUE(capture());
  ASSERT_THAT(service.sessions, SizeIs(1));
  EXPECT_EQ(service.sessions.front().requestTimeout, 90);
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
  const VELKError notSecure = VELKError::network("The address is not secure.");
  defaults.setString("VELKBaseURL", "http://velk.example");
  EXPECT_EQ(errorOf(login()), notSecure);
  EXPECT_EQ(errorOf(fetch()), notSecure);
  EXPECT_EQ(errorOf(capture()), notSecure);
  EXPECT_THAT(service.requests, IsEmpty());
  defaults.setString("VELKBaseURL", "http://127.0.0.1:8080");
  EXPECT_EQ(sentByACall(), NOT_REFRESHED) << "the user is still signed in";
}

// --- What an answer means ------------------------------------------------------------------------

TEST_F(VelkClientTest, ParticipantsArriveInTheServicesOrder) {
  service.backend.participants = {{"9", "Zoe", "Abel"}, {"1", "Adam", "Best"}};
  EXPECT_THAT(fetch().value(),
              ElementsAre(Participant{"9", "Zoe", "Abel"}, Participant{"1", "Adam", "Best"}));
}

TEST_F(VelkClientTest, AnAnswerWithoutAListOfParticipantsIsMalformed) {
  service.answers(PARTICIPANTS_PATH, 200);
  EXPECT_EQ(errorOf(fetch()), VELKError::api("Malformed participants response"));
}

TEST_F(VelkClientTest, ACaptureDeliversTheServicesIdIfAny) {
  EXPECT_EQ(capture().value(), "note-1");
  service.answersText(CAPTURE_PATH, 200, std::nullopt);
  EXPECT_EQ(capture().value(), std::nullopt);
}

TEST_F(VelkClientTest, AnyOtherStatusIsARefusalARedirectToo) {
  for (const int status : {199, 201, 204, 302, 400, 402, 403, 428, 430, 499, 600}) {
    EXPECT_EQ(errorAfter(status, {{"capturedId", "x"}}),
              VELKError::api(coded("Request failed", status)));
    EXPECT_EQ(errorAfter(status, {{"error", "Archived"}}), VELKError::api("Archived"));
  }
}

TEST_F(VelkClientTest, BusyIs429And500To599) {
  for (const int status : {429, 500, 599}) {
    EXPECT_EQ(errorAfter(status), VELKError::network(coded("Server busy", status)));
    EXPECT_EQ(errorAfter(status, {{"error", "Slow down"}}), VELKError::network("Slow down"));
  }
}

TEST_F(VelkClientTest, NoAnswerIsANetworkError) {
  service.fails(PARTICIPANTS_PATH, "The request timed out.");
  EXPECT_EQ(errorOf(fetch()), VELKError::network("The request timed out."));
  service.answersNoHttp(PARTICIPANTS_PATH);
  EXPECT_EQ(errorOf(fetch()), VELKError::network("No response"));
}

// --- Authorisation -------------------------------------------------------------------------------

TEST_F(VelkClientTest, AfterA401OnlyTheNextCallRefreshes) {
  EXPECT_EQ(errorAfter(401, {{"error", "Token revoked"}}), AUTHORISATION_EXPIRED);
  EXPECT_THAT(service.requests, SizeIs(1)) << "it does not try again by itself";
  EXPECT_TRUE(client().isSignedIn());
  EXPECT_EQ(client().userEmail(), "ada@velk.example");
  EXPECT_EQ(sentByACall(), REFRESHED_FIRST);
  EXPECT_EQ(authorizationOf(1), "Bearer access-2");
}

TEST_F(VelkClientTest, OtherFailuresKeepTheAccessToken) {
  for (const int status : {400, 402, 429, 503}) EXPECT_TRUE(errorAfter(status));
  service.fails(CAPTURE_PATH, "offline");
  EXPECT_FALSE(capture());
  EXPECT_EQ(sentByACall(), NOT_REFRESHED);
}

TEST_F(VelkClientTest, WithoutATokenNothingIsSent) {
  client().signOut();
  EXPECT_EQ(errorOf(fetch()), VELKError::notSignedIn());
  EXPECT_EQ(errorOf(capture()), VELKError::notSignedIn());
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(VelkClientTest, WhileTheStoreIsLockedACallMayPassLater) {
  VELKClient::releaseShared();
  secrets.locked = true;
  EXPECT_EQ(errorOf(fetch()), VELKError::network("The password store is locked"));
  EXPECT_TRUE(client().isSignedIn());
  EXPECT_THAT(service.requests, IsEmpty());
}

// --- Order and lifetime --------------------------------------------------------------------------

TEST_F(VelkClientTest, CallsAreAnsweredInAnyOrder) {
  service.holdsAnswers();
  const auto list = startFetch();
  const auto note = startCapture();
  service.releases(1);
  EXPECT_TRUE(note.result());
  EXPECT_FALSE(list.isAnswered());
  service.releases(0);
  EXPECT_TRUE(list.result());
}

TEST_F(VelkClientTest, SixAuthorisedCallsAreUnderWayAtATime) {
  service.holdsAnswers();
  std::vector<NoteCall> calls;
  for (int note = 1; note <= 8; ++note) calls.push_back(startCapture(std::to_string(note)));
  EXPECT_THAT(service.requests, SizeIs(6));
  service.releases(0);
  EXPECT_THAT(service.requests, SizeIs(7));
  EXPECT_EQ(lastRequest().json()["input"], "7");
  service.releasesAll();
  for (const auto& call : calls) EXPECT_TRUE(call.result());
}

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
