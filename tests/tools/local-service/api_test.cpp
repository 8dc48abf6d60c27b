#include <gtest/gtest.h>

#include <future>
#include <set>

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
    EXPECT_TRUE(jsonOf(result).is_object() && jsonOf(result).value("error", json()).is_string());
  }

  httplib::Result refresh(const json& token) {
    return world.post(REFRESH, {{"refreshToken", token}});
  }

  httplib::Result participants(const std::string& header) {
    return world.client().Get(PARTICIPANTS, {{"Authorization", header}});
  }

  json notes() { return world.service.records().notes(); }

  TestWorld world;
  json session = world.signIn();
  std::string access = session.at("accessToken");
};

TEST_F(ApiTest, SignInAnswersTheSessionAndTheEmailOrAFixedText) {
  EXPECT_EQ(session.at("user"), json({{"email", TestWorld::EMAIL}}));
  EXPECT_EQ(session.size(), 4U);
  for (const auto& [email, password] :
       {std::pair(TestWorld::EMAIL, "wrong"), std::pair("nobody", TestWorld::PASSWORD)}) {
    const auto answer = world.post(LOGIN, {{"email", email}, {"password", password}});
    EXPECT_EQ(statusOf(answer), 401);
    EXPECT_EQ(jsonOf(answer), json({{"error", "Invalid email or password"}}));
  }
}

TEST_F(ApiTest, RefreshAnswersANewPairOnly) {
  const auto second = jsonOf(refresh(session.at("refreshToken")));
  EXPECT_EQ(second.size(), 3U);
  EXPECT_EQ(statusOf(participants("Bearer " + second.at("accessToken").get<std::string>())), 200);
  expectRefused(refresh("made up"), 401);
}

TEST_F(ApiTest, FiftyRefreshesAtOnceLeaveTheClientSignedIn) {
  std::vector<std::future<json>> answers;
  for (int at = 0; at < 50; ++at) {
    answers.push_back(std::async(std::launch::async,
                                 [this] { return jsonOf(refresh(session.at("refreshToken"))); }));
  }
  std::set<std::string> all;
  for (auto& answer : answers) all.insert(answer.get().at("refreshToken"));
  EXPECT_EQ(all.size(), 50U);
  world.clock.advance(10min);
  for (const auto& token : all) EXPECT_EQ(statusOf(refresh(token)), 200);
}

TEST_F(ApiTest, ListsTheParticipantsForABearerTokenOnly) {
  const auto list = jsonOf(participants("Bearer " + access)).at("participants");
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0], json({{"id", "p-1"}, {"first_name", "Zoë"}, {"last_name", "Lindqvist"}}));
  for (const auto& header : {std::string("Bearer "), "Basic " + access, access}) {
    expectRefused(participants(header), 401);
  }
  expectRefused(world.client().Get(PARTICIPANTS), 401);
  expectRefused(world.post(CAPTURE, noteOf("x")), 401);
}

TEST_F(ApiTest, CaptureStoresTheNoteAndAnswersItsId) {
  auto note = noteOf("A\n<b> – 🙂");
  note["durationMinutes"] = 1440;
  const auto answer = jsonOf(world.post(CAPTURE, note, access));
  ASSERT_EQ(answer.size(), 1U);
  note.update({{"id", answer.at("capturedId")},
               {"participantName", "Zoë Lindqvist"},
               {"capturedAt", 1'770'000'000.0}});
  EXPECT_EQ(notes(), json::array({note}));
}

TEST_F(ApiTest, CaptureRefusesEveryFieldThatIsWrongAndStoresNothing) {
  const auto wrongs = json::parse(R"([
      ["participantId", "p-999"], ["participantId", 1], ["input", " \t\r\n"], ["input", []],
      ["durationMinutes", 0], ["durationMinutes", 1441], ["durationMinutes", 30.5],
      ["durationMinutes", true], ["sessionDate", "2026-02-30"], ["sessionDate", "2026-3-5"],
      ["sessionDate", "05.03.2026"], ["sessionDate", "2026-03-05T00"]])");
  for (const auto& wrong : wrongs) {
    const std::string field = wrong[0];
    auto note = noteOf("x");
    note[field] = wrong[1];
    SCOPED_TRACE(note.dump());
    expectRefused(world.post(CAPTURE, note, access), 400);
    note.erase(field);
    expectRefused(world.post(CAPTURE, note, access), 400);
  }
  EXPECT_TRUE(notes().empty());
}

TEST_F(ApiTest, BodiesThatAreNoJsonObjectsOrWouldHurtAreRefused) {
  const std::string deep = std::string(100'000, '[') + std::string(100'000, ']');
  for (const auto* const path : {LOGIN, REFRESH, CAPTURE}) {
    for (const auto& body :
         {std::string(), std::string("7"), std::string("{}"), deep, "{\"a\":" + deep,
          std::string("{\"email\": 1e999999}"), std::string("{\"email\": \"\xff\"}")}) {
      expectRefused(world.post(path, body, access), 400);
    }
  }
}

}  // namespace
}  // namespace notewick::service
