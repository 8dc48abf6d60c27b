#include "tools/local-service/api.h"

#include <gtest/gtest.h>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

using nlohmann::json;
using namespace std::chrono_literals;

constexpr auto LOGIN = "/api/desktop/auth/login";
constexpr auto REFRESH = "/api/desktop/auth/refresh";
constexpr auto PARTICIPANTS = "/api/desktop/participants";
constexpr auto CAPTURE = "/api/desktop/case-notes/capture";

class ApiTest : public testing::Test {
 protected:
  void expectRefused(const httplib::Result& result, int status) {
    EXPECT_EQ(statusOf(result), status);
    EXPECT_TRUE(jsonOf(result).is_object());
    EXPECT_TRUE(jsonOf(result).value("error", json()).is_string());
  }

  json goodNote() {
    return {{"participantId", "p-101"},
            {"input", "Rang about the flat"},
            {"durationMinutes", 45},
            {"sessionDate", "2026-03-05"}};
  }

  TestWorld world;
};

TEST_F(ApiTest, SignInAnswersBothTokensTheExpiryAndTheEmail) {
  const auto answer = world.signIn();
  EXPECT_EQ(answer.at("accessToken").get<std::string>().size(), 43U);
  EXPECT_EQ(answer.at("refreshToken").get<std::string>().size(), 43U);
  EXPECT_NE(answer.at("accessToken"), answer.at("refreshToken"));
  EXPECT_TRUE(answer.at("expiresAt").is_number_integer());
  EXPECT_EQ(answer.at("expiresAt"), world.clock.now().time_since_epoch() / 1s + 3600);
  EXPECT_EQ(answer.at("user").at("email"), TestWorld::EMAIL);
}

TEST_F(ApiTest, WrongCredentialsAreRefusedWithTheirFixedText) {
  const json wrong = {{"email", TestWorld::EMAIL}, {"password", "wrong"}};
  const json unknown = {{"email", "nobody@example.org"}, {"password", TestWorld::PASSWORD}};
  for (const auto& body : {wrong, unknown}) {
    const auto answer = world.post(LOGIN, body.dump());
    EXPECT_EQ(statusOf(answer), 401);
    EXPECT_EQ(jsonOf(answer), json({{"error", "Invalid email or password"}}));
  }
}

TEST_F(ApiTest, BodiesOfTheWrongShapeAreRefused) {
  for (const std::string body :
       {"", "x", "[]", "7", "null", "{}", R"({"email": "a"})", R"({"email": 1, "password": "x"})",
        R"({"email": "a", "password": null})", "{\"email\": \"\xff\", \"password\": \"x\"}"}) {
    expectRefused(world.post(LOGIN, body), 400);
  }
  for (const std::string body : {"", "{}", R"({"refreshToken": 5})"}) {
    expectRefused(world.post(REFRESH, body), 400);
  }
}

TEST_F(ApiTest, RefreshAnswersANewPairOnly) {
  const auto first = world.signIn();
  const auto answer = world.refresh(first.at("refreshToken"));
  ASSERT_EQ(statusOf(answer), 200);
  const auto second = jsonOf(answer);
  EXPECT_NE(second.at("accessToken"), first.at("accessToken"));
  EXPECT_NE(second.at("refreshToken"), first.at("refreshToken"));
  EXPECT_TRUE(second.at("expiresAt").is_number_integer());
  EXPECT_FALSE(second.contains("user"));
  EXPECT_EQ(statusOf(world.get(PARTICIPANTS, second.at("accessToken"))), 200);
}

TEST_F(ApiTest, RefreshRefusesUnknownAndAccessTokens) {
  expectRefused(world.refresh("made up"), 401);
  expectRefused(world.refresh(world.accessToken()), 401);
}

TEST_F(ApiTest, ListsTheParticipantsInTheirOrderAndForm) {
  const auto answer = world.get(PARTICIPANTS, world.accessToken());
  ASSERT_EQ(statusOf(answer), 200);
  const auto list = jsonOf(answer).at("participants");
  ASSERT_EQ(list.size(), 12U);
  EXPECT_EQ(list[0], json({{"id", "p-101"}, {"first_name", "Tobias"}, {"last_name", "Hargreave"}}));
  EXPECT_EQ(list[3].at("first_name"), "José");
}

TEST_F(ApiTest, AuthorisedCallsNeedABearerToken) {
  const auto session = world.signIn();
  const std::string access = session.at("accessToken");
  const auto with = [&](const std::string& header) {
    return world.client().Get(PARTICIPANTS, {{"Authorization", header}});
  };
  expectRefused(world.client().Get(PARTICIPANTS), 401);
  expectRefused(with(""), 401);
  expectRefused(with("Bearer "), 401);
  expectRefused(with("Bearer made up"), 401);
  expectRefused(with("Basic " + access), 401);
  expectRefused(with("Bearer " + session.at("refreshToken").get<std::string>()), 401);
  expectRefused(world.client().Post(CAPTURE, goodNote().dump(), "application/json"), 401);
  EXPECT_EQ(statusOf(with("Bearer " + access)), 200);
}

TEST_F(ApiTest, AnAccessTokenWorksUntilItExpires) {
  const auto access = world.accessToken();
  world.clock.advance(3600s - 1ms);
  EXPECT_EQ(statusOf(world.get(PARTICIPANTS, access)), 200);
  world.clock.advance(1ms);
  expectRefused(world.get(PARTICIPANTS, access), 401);
}

TEST_F(ApiTest, CaptureStoresTheNoteAndAnswersItsId) {
  const auto answer = world.post(CAPTURE, goodNote().dump(), world.accessToken());
  ASSERT_EQ(statusOf(answer), 200);
  const auto notes = world.service.notes().all();
  ASSERT_EQ(notes.size(), 1U);
  EXPECT_EQ(jsonOf(answer), json({{"capturedId", notes[0].id}}));
  EXPECT_EQ(notes[0].participant, (Participant{"p-101", "Tobias", "Hargreave"}));
  EXPECT_EQ(notes[0].input, "Rang about the flat");
  EXPECT_EQ(notes[0].minutes, 45);
  EXPECT_EQ(notes[0].sessionDate, "2026-03-05");
  EXPECT_EQ(notes[0].capturedAt, world.clock.now());
}

TEST_F(ApiTest, TheSameNoteSentTwiceIsStoredTwice) {
  const auto access = world.accessToken();
  const auto first = jsonOf(world.capture(access, "once"));
  const auto second = jsonOf(world.capture(access, "once"));
  EXPECT_NE(first.at("capturedId"), second.at("capturedId"));
  EXPECT_EQ(world.service.notes().all().size(), 2U);
}

TEST_F(ApiTest, CaptureRefusesEveryFieldThatIsWrongAndStoresNothing) {
  const std::vector<std::pair<std::string, json>> wrongs = {{"participantId", nullptr},
                                                            {"participantId", "p-999"},
                                                            {"participantId", 101},
                                                            {"input", ""},
                                                            {"input", " \t\n"},
                                                            {"input", json::array()},
                                                            {"durationMinutes", 0},
                                                            {"durationMinutes", -15},
                                                            {"durationMinutes", 1441},
                                                            {"durationMinutes", 30.5},
                                                            {"durationMinutes", "30"},
                                                            {"durationMinutes", true},
                                                            {"durationMinutes", UINT64_MAX},
                                                            {"sessionDate", "2026-02-30"},
                                                            {"sessionDate", "2026-3-5"},
                                                            {"sessionDate", "05.03.2026"},
                                                            {"sessionDate", "2026-03-05T00"},
                                                            {"sessionDate", "2026-0x-05"},
                                                            {"sessionDate", 20260305}};
  const auto access = world.accessToken();
  for (const auto& [field, value] : wrongs) {
    auto note = goodNote();
    note[field] = value;
    SCOPED_TRACE(note.dump());
    expectRefused(world.post(CAPTURE, note.dump(), access), 400);
  }
  for (const auto* const field : {"participantId", "input", "durationMinutes", "sessionDate"}) {
    auto note = goodNote();
    note.erase(field);
    expectRefused(world.post(CAPTURE, note.dump(), access), 400);
  }
  EXPECT_TRUE(world.service.notes().all().empty());
}

TEST_F(ApiTest, CaptureTakesTheMinutesFromOneToAWholeDay) {
  const auto access = world.accessToken();
  for (const int minutes : {1, 15, 120, 1440}) {
    auto note = goodNote();
    note["durationMinutes"] = minutes;
    EXPECT_EQ(statusOf(world.post(CAPTURE, note.dump(), access)), 200);
  }
}

TEST_F(ApiTest, OtherMethodsAndPathsAreRefused) {
  expectRefused(world.get(LOGIN), 405);
  expectRefused(world.post(PARTICIPANTS, "{}", world.accessToken()), 405);
  expectRefused(world.get("/api/desktop/accounts"), 404);
  expectRefused(world.post("/faults", "{}"), 404);
}

}  // namespace
}  // namespace notewick::service
