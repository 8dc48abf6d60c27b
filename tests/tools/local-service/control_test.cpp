#include "tools/local-service/control.h"

#include <gtest/gtest.h>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

using nlohmann::json;

class ControlTest : public testing::Test {
 protected:
  httplib::Client control() {
    return httplib::Client("http://127.0.0.1:" + std::to_string(*world.service.controlPort()));
  }

  int command(const json& faults) {
    return statusOf(control().Post("/faults", faults.dump(), "application/json"));
  }

  TestWorld world{ServiceSettings{.controlPort = 0}};
};

TEST_F(ControlTest, SetsOneFaultAndClearsIt) {
  ASSERT_EQ(command({{"path", "/login"}, {"status", 503}}), 200);
  EXPECT_EQ(statusOf(world.get("/login")), 503);
  EXPECT_EQ(statusOf(world.get("/login")), 503);
  ASSERT_EQ(statusOf(control().Delete("/faults")), 200);
  EXPECT_EQ(statusOf(world.get("/login")), 200);
}

TEST_F(ControlTest, SetsAListOfFaultsThatHappenInTheirOrder) {
  ASSERT_EQ(command({{{"status", 503}, {"times", 1}}, {{"status", 429}, {"times", 2}}}), 200);
  EXPECT_EQ(statusOf(world.get("/login")), 503);
  EXPECT_EQ(statusOf(world.get("/login")), 429);
  EXPECT_EQ(statusOf(world.get("/login")), 429);
  EXPECT_EQ(statusOf(world.get("/login")), 200);
}

TEST_F(ControlTest, RefusesWhatIsNoFaultAndThenSetsNone) {
  EXPECT_EQ(command({{{"status", 503}}, {{"status", "x"}}}), 400);
  EXPECT_EQ(statusOf(control().Post("/faults", "{", "application/json")), 400);
  EXPECT_EQ(command(7), 400);
  EXPECT_EQ(statusOf(world.get("/login")), 200);
}

TEST_F(ControlTest, ShowsTheRequestsSeenAlsoThoseThatFailed) {
  ASSERT_EQ(command({{"status", 500}, {"times", 1}}), 200);
  ASSERT_EQ(statusOf(world.post("/api/desktop/auth/login", "{\"a\": 1}", "abc")), 500);
  ASSERT_EQ(statusOf(world.get("/login")), 200);
  const auto seen = jsonOf(control().Get("/requests"));
  ASSERT_EQ(seen.size(), 2U);
  EXPECT_EQ(seen[0].at("method"), "POST");
  EXPECT_EQ(seen[0].at("path"), "/api/desktop/auth/login");
  EXPECT_EQ(seen[0].at("body"), "{\"a\": 1}");
  EXPECT_EQ(seen[0].at("headers").at("Authorization"), "Bearer abc");
  EXPECT_EQ(seen[0].at("headers").at("Content-Type"), "application/json");
  EXPECT_FALSE(seen[0].at("headers").contains("REMOTE_ADDR"));
  EXPECT_EQ(seen[1].at("method"), "GET");
}

TEST_F(ControlTest, ForgetsTheRequestsWhenTold) {
  ASSERT_EQ(statusOf(world.get("/login")), 200);
  ASSERT_EQ(statusOf(control().Delete("/requests")), 200);
  EXPECT_EQ(jsonOf(control().Get("/requests")), json::array());
}

TEST_F(ControlTest, ShowsABodyThatIsNoTextWithReplacements) {
  ASSERT_EQ(statusOf(world.post("/api/desktop/auth/login", "\xff\xfe")), 400);
  const auto seen = jsonOf(control().Get("/requests"));
  EXPECT_EQ(seen.at(0).at("body"), "\uFFFD\uFFFD");
}

TEST_F(ControlTest, ShowsTheNotesOfTheDatabase) {
  ASSERT_EQ(statusOf(world.capture(world.accessToken(), "Rang")), 200);
  const auto notes = jsonOf(control().Get("/notes"));
  ASSERT_EQ(notes.size(), 1U);
  EXPECT_EQ(notes[0].at("participantId"), "p-101");
  EXPECT_EQ(notes[0].at("participantName"), "Tobias Hargreave");
  EXPECT_EQ(notes[0].at("input"), "Rang");
  EXPECT_EQ(notes[0].at("durationMinutes"), 30);
  EXPECT_EQ(notes[0].at("sessionDate"), "2026-03-05");
  EXPECT_EQ(notes[0].at("capturedAt"), 1'770'000'000.0);
  EXPECT_EQ(notes[0].at("id"), world.service.notes().all().at(0).id);
}

TEST_F(ControlTest, IsNoPartOfTheServiceItself) {
  EXPECT_EQ(statusOf(world.get("/requests")), 404);
  EXPECT_EQ(statusOf(world.get("/notes")), 404);
  EXPECT_EQ(statusOf(control().Get("/login")), 404);
}

}  // namespace
}  // namespace notewick::service
