#include "client/velk_client.h"

#include <gmock/gmock.h>

#include "tests/support/client_world.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;
using testing::UnorderedElementsAre;

const VELKError NOT_SECURE = VELKError::network("The address is not secure.");
const VELKError AUTHORISATION_EXPIRED = VELKError::network("Authorisation expired — will retry");

class VelkClientTest : public ClientTest {
 protected:
  VelkClientTest() {
    knows({"Tobias Hargreave", "Lena O'Keefe"});
    hasFreshToken();
  }

  [[nodiscard]] const ReceivedRequest& lastRequest() const { return service.requests.back(); }
};

// --- The wire ------------------------------------------------------------------------------------

TEST_F(VelkClientTest, AsksForParticipantsWithExactlyThis) {
  EXPECT_TRUE(fetch());
  ASSERT_THAT(service.requests, SizeIs(1));
  EXPECT_EQ(lastRequest().method, "GET");
  EXPECT_EQ(lastRequest().url, "https://velk.example/api/desktop/participants");
  EXPECT_THAT(lastRequest().headers,
              UnorderedElementsAre(Pair("Content-Type", "application/json"),
                                   Pair("User-Agent", "velk-notewick/1.0 (macOS)"),
                                   Pair("Authorization", "Bearer access-1")));
  EXPECT_EQ(lastRequest().body, std::nullopt);
  EXPECT_EQ(lastRequest().timeout, 60);
}

TEST_F(VelkClientTest, HandsOverANoteWithExactlyThis) {
  EXPECT_TRUE(capture("Phoned about the housing form"));
  ASSERT_THAT(service.requests, SizeIs(1));
  EXPECT_EQ(lastRequest().method, "POST");
  EXPECT_EQ(lastRequest().url, "https://velk.example/api/desktop/case-notes/capture");
  EXPECT_THAT(lastRequest().headers,
              UnorderedElementsAre(Pair("Content-Type", "application/json"),
                                   Pair("User-Agent", "velk-notewick/1.0 (macOS)"),
                                   Pair("Authorization", "Bearer access-1")));
  EXPECT_EQ(lastRequest().json(), json({{"participantId", "2"},
                                        {"input", "Phoned about the housing form"},
                                        {"durationMinutes", 30},
                                        {"sessionDate", "2024-05-01"}}));
  EXPECT_EQ(lastRequest().timeout, 60);
}

TEST_F(VelkClientTest, MinutesTravelAsAnInteger) {
  EXPECT_TRUE(capture());
  EXPECT_TRUE(lastRequest().json()["durationMinutes"].is_number_integer());
}

TEST_F(VelkClientTest, BodiesAreCompact) {
  EXPECT_TRUE(capture("x"));
  EXPECT_EQ(lastRequest().body, lastRequest().json().dump());
}

TEST_F(VelkClientTest, ANoteTravelsToTheCharacter) {
  const std::string note = "She said \"yes\"\\\n\tFinally – 👩‍👧 e\u0301";
  EXPECT_TRUE(capture(note));
  EXPECT_EQ(lastRequest().json()["input"], note);
}

TEST_F(VelkClientTest, BrokenTextInANoteIsRepairedOnTheWay) {
  EXPECT_TRUE(capture("cut \xC3"));
  EXPECT_EQ(lastRequest().json()["input"], "cut \uFFFD");
}

TEST_F(VelkClientTest, AllCallsGoThroughOneSession) {
  EXPECT_TRUE(fetch());
  EXPECT_TRUE(capture());
  ASSERT_THAT(service.sessions, SizeIs(1));
  EXPECT_EQ(service.sessions.front().requestTimeout, 90);
}

// --- The base URL --------------------------------------------------------------------------------

TEST_F(VelkClientTest, TheBaseUrlIsReadAnewForEveryRequest) {
  defaults.setString("VELKBaseURL", "http://127.0.0.1:8080/velk/");
  EXPECT_TRUE(fetch());
  EXPECT_EQ(lastRequest().url, "http://127.0.0.1:8080/velk/api/desktop/participants");
  defaults.remove("VELKBaseURL");
  EXPECT_TRUE(fetch());
  EXPECT_EQ(lastRequest().url, "https://velk.example/api/desktop/participants");
}

TEST_F(VelkClientTest, OneTrailingSlashOfTheBaseUrlIsRemoved) {
  defaults.setString("VELKBaseURL", "https://velk.test//");
  (void)fetch();
  EXPECT_EQ(lastRequest().url, "https://velk.test//api/desktop/participants");
}

TEST_F(VelkClientTest, NothingIsSentToAnAddressThatIsNotSecure) {
  for (const auto* const base :
       {"http://velk.example", "http://localhost@velk.example", "ftp://localhost", "velk", ""}) {
    defaults.setString("VELKBaseURL", base);
    EXPECT_EQ(errorOf(login()), NOT_SECURE) << base;
    EXPECT_EQ(errorOf(fetch()), NOT_SECURE) << base;
    EXPECT_EQ(errorOf(capture()), NOT_SECURE) << base;
  }
  advance(3600);
  EXPECT_EQ(errorOf(fetch()), NOT_SECURE) << "the refresh before it";
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(VelkClientTest, OnceTheAddressIsSecureTheUserIsStillSignedIn) {
  defaults.setString("VELKBaseURL", "http://velk.example");
  EXPECT_FALSE(fetch());
  defaults.setString("VELKBaseURL", "http://127.0.0.1:8080");
  EXPECT_TRUE(fetch());
  EXPECT_EQ(authorizationOf(0), "Bearer access-1");
}

using VelkClientDeathTest = VelkClientTest;

TEST_F(VelkClientDeathTest, ABaseUrlThatIsNoAddressEndsTheProgramWithOneLine) {
  const auto oneLine = "^notewick: VELKBaseURL is no valid address: https://velk test\n$";
  defaults.setString("VELKBaseURL", "https://velk test");
  EXPECT_EXIT((void)login(), testing::ExitedWithCode(1), oneLine);
  EXPECT_EXIT((void)fetch(), testing::ExitedWithCode(1), oneLine);
  EXPECT_EXIT((void)capture(), testing::ExitedWithCode(1), oneLine);
  advance(3600);
  EXPECT_EXIT((void)fetch(), testing::ExitedWithCode(1), oneLine) << "the refresh before it";
}

// --- What an answer means ------------------------------------------------------------------------

TEST_F(VelkClientTest, ACaptureDeliversTheServicesId) {
  EXPECT_EQ(capture().value(), "note-1");
}

TEST_F(VelkClientTest, AnIdThatIsNoTextIsNoId) {
  service.answers(CAPTURE_PATH, 200, {{"capturedId", 42}});
  EXPECT_EQ(capture().value(), std::nullopt);
}

TEST_F(VelkClientTest, ACaptureAnswered200SucceedsWhateverTheBody) {
  for (const auto* const body : {"", "{}", "[]", "null", "<html>", R"({"capturedId":)"}) {
    service.answersText(CAPTURE_PATH, 200, body);
    const auto result = capture();
    ASSERT_TRUE(result) << body;
    EXPECT_EQ(*result, std::nullopt) << body;
  }
}

TEST_F(VelkClientTest, ParticipantsArriveInTheServicesOrder) {
  service.backend.participants = {{"9", "Zoe", "Abel"}, {"1", "Adam", "Best"}};
  EXPECT_THAT(fetch().value(),
              ElementsAre(Participant{"9", "Zoe", "Abel"}, Participant{"1", "Adam", "Best"}));
}

TEST_F(VelkClientTest, AParticipantsAnswerWithoutAListIsMalformed) {
  for (const auto* const body : {"", "{}", "[]", R"({"participants":"x"})", "<html>"}) {
    service.answersText(PARTICIPANTS_PATH, 200, body);
    EXPECT_EQ(errorOf(fetch()), VELKError::api("Malformed participants response")) << body;
  }
}

TEST_F(VelkClientTest, Only200IsASuccess) {
  for (const int status : {201, 202, 204, 206}) {
    service.answers(CAPTURE_PATH, status, {{"capturedId", "x"}});
    EXPECT_EQ(errorOf(capture()),
              VELKError::api("Request failed (" + std::to_string(status) + ")"));
  }
}

TEST_F(VelkClientTest, ARedirectIsARefusalAndGoesNowhere) {
  for (const int status : {301, 302, 303, 307, 308}) {
    service.forgetRequests();
    service.answers(PARTICIPANTS_PATH, status);
    EXPECT_EQ(errorOf(fetch()), VELKError::api("Request failed (" + std::to_string(status) + ")"));
    EXPECT_THAT(service.requests, SizeIs(1));
  }
}

TEST_F(VelkClientTest, BusyIs429And500To599) {
  for (const int status : {429, 500, 502, 503, 599}) {
    service.answers(PARTICIPANTS_PATH, status);
    EXPECT_EQ(errorOf(fetch()), VELKError::network("Server busy (" + std::to_string(status) + ")"));
  }
  for (const int status : {428, 430, 499, 600}) {
    service.answers(PARTICIPANTS_PATH, status);
    EXPECT_EQ(errorOf(fetch()), VELKError::api("Request failed (" + std::to_string(status) + ")"));
  }
}

TEST_F(VelkClientTest, ThrottlingTellsTheServicesReason) {
  service.answers(CAPTURE_PATH, 429, {{"error", "Slow down, please"}});
  EXPECT_EQ(errorOf(capture()), VELKError::network("Slow down, please"));
}

TEST_F(VelkClientTest, ARefusalTellsTheServicesReason) {
  service.answers(CAPTURE_PATH, 422, {{"error", "Participant archived"}});
  EXPECT_EQ(errorOf(capture()), VELKError::api("Participant archived"));
}

TEST_F(VelkClientTest, AReasonThatIsNoTextIsIgnored) {
  for (const json& reason :
       {json(7), json(nullptr), json(true), json::array({"x"}), json({{"message", "x"}})}) {
    service.answers(CAPTURE_PATH, 422, {{"error", reason}});
    EXPECT_EQ(errorOf(capture()), VELKError::api("Request failed (422)")) << reason;
  }
}

TEST_F(VelkClientTest, AnHtmlPageHasNoReason) {
  service.answersText(CAPTURE_PATH, 502, "<html><body>Bad gateway</body></html>");
  EXPECT_EQ(errorOf(capture()), VELKError::network("Server busy (502)"));
}

TEST_F(VelkClientTest, AnArrayHasNoReason) {
  service.answersText(CAPTURE_PATH, 500, R"([{"error":"x"}])");
  EXPECT_EQ(errorOf(capture()), VELKError::network("Server busy (500)"));
}

TEST_F(VelkClientTest, NoAnswerTellsTheSystemsReason) {
  service.fails(PARTICIPANTS_PATH, "The request timed out.");
  EXPECT_EQ(errorOf(fetch()), VELKError::network("The request timed out."));
}

TEST_F(VelkClientTest, WhatIsNoHttpIsNoResponse) {
  service.answersNoHttp(PARTICIPANTS_PATH);
  EXPECT_EQ(errorOf(fetch()), VELKError::network("No response"));
}

// --- Authorisation -------------------------------------------------------------------------------

TEST_F(VelkClientTest, A401IsNotTriedAgainByItself) {
  service.answers(PARTICIPANTS_PATH, 401, {{"error", "Token revoked"}});
  EXPECT_EQ(errorOf(fetch()), AUTHORISATION_EXPIRED);
  EXPECT_THAT(service.trail(), ElementsAre("GET /api/desktop/participants"));
}

TEST_F(VelkClientTest, AfterA401TheNextCallRefreshesFirst) {
  service.answers(CAPTURE_PATH, 401);
  EXPECT_EQ(errorOf(capture()), AUTHORISATION_EXPIRED);
  service.forgetRequests();
  EXPECT_TRUE(capture());
  EXPECT_THAT(service.trail(), ElementsAre("POST /api/desktop/auth/refresh",
                                           "POST /api/desktop/case-notes/capture"));
  EXPECT_EQ(authorizationOf(0), "none");
  EXPECT_EQ(authorizationOf(1), "Bearer access-2");
}

TEST_F(VelkClientTest, A401LeavesTheUserSignedIn) {
  service.answers(CAPTURE_PATH, 401);
  (void)capture();
  EXPECT_TRUE(client().isSignedIn());
  EXPECT_EQ(client().userEmail(), "ada@velk.example");
}

TEST_F(VelkClientTest, OtherFailuresKeepTheAccessToken) {
  for (const int status : {400, 403, 429, 500, 503}) {
    service.answers(CAPTURE_PATH, status);
    EXPECT_FALSE(capture());
  }
  service.fails(CAPTURE_PATH, "offline");
  EXPECT_FALSE(capture());
  service.forgetRequests();
  EXPECT_TRUE(capture());
  EXPECT_THAT(service.requests, SizeIs(1)) << "no refresh was needed";
}

TEST_F(VelkClientTest, WithoutATokenNothingIsSent) {
  client().signOut();
  EXPECT_EQ(errorOf(fetch()), VELKError::notSignedIn());
  EXPECT_EQ(errorOf(capture()), VELKError::notSignedIn());
  EXPECT_THAT(service.requests, IsEmpty());
}

// --- Order and lifetime --------------------------------------------------------------------------

TEST_F(VelkClientTest, AnswersArriveInALaterTurn) {
  Received<std::vector<Participant>> received;
  client().fetchParticipants(received.completion());
  EXPECT_FALSE(received.arrived());
  loop.runPosted();
  EXPECT_TRUE(received.only());
}

TEST_F(VelkClientTest, CallsRunTogetherAndMayBeAnsweredInAnyOrder) {
  service.holdsAnswers();
  Received<std::vector<Participant>> list;
  Received<std::optional<std::string>> note;
  client().fetchParticipants(list.completion());
  client().captureNote("1", "x", 15, "2024-05-02", note.completion());
  EXPECT_EQ(service.heldAnswers(), 2u);
  service.releases(1);
  EXPECT_TRUE(note.arrived());
  EXPECT_FALSE(list.arrived());
  service.releases(0);
  EXPECT_TRUE(list.only());
  EXPECT_TRUE(note.only());
}

TEST_F(VelkClientTest, AClientThatIsGoneAnswersNobody) {
  Received<std::vector<Participant>> received;
  client().fetchParticipants(received.completion());
  VELKClient::releaseShared();
  loop.runPosted();
  EXPECT_FALSE(received.arrived());
}

TEST_F(VelkClientTest, ThereIsOneClient) {
  EXPECT_EQ(&VELKClient::shared(), &VELKClient::shared());
}

TEST_F(VelkClientTest, TheAccessTokenDoesNotOutliveTheProcess) {
  VELKClient::releaseShared();
  EXPECT_TRUE(fetch());
  EXPECT_THAT(service.trail(),
              ElementsAre("POST /api/desktop/auth/refresh", "GET /api/desktop/participants"));
}

}  // namespace
}  // namespace notewick
