#include "tools/local-service/control.h"

#include <gtest/gtest.h>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

using nlohmann::json;

class ControlTest : public testing::Test {
 protected:
  httplib::Result get(const std::string& path) { return world.client().Get(path); }
  httplib::Client control() { return clientOf(world.service.controlPort().value()); }

  TestWorld world;
};

TEST_F(ControlTest, SetsFaultsAlsoForUnknownPathsAndClearsThem) {
  const auto faults = R"([{"path": "/login", "status": 503}, {"path": "/a", "status": 201}])";
  ASSERT_EQ(statusOf(control().Post("/faults", faults, "application/json")), 200);
  EXPECT_EQ(statusOf(get("/login")), 503);
  EXPECT_EQ(statusOf(get("/a")), 201);
  ASSERT_EQ(statusOf(control().Delete("/faults")), 200);
  EXPECT_EQ(statusOf(get("/login")), 200);
}

TEST_F(ControlTest, ShowsTheRequestsSeenAlsoThoseThatFailed) {
  world.service.faults().add({{"status", 500}, {"times", 1}});
  ASSERT_EQ(statusOf(world.post("/api/desktop/auth/login?a=b", "\xff", "abc")), 500);
  ASSERT_EQ(statusOf(get("/unknown")), 404);
  const auto seen = jsonOf(control().Get("/requests"));
  ASSERT_EQ(seen.size(), 2U);
  EXPECT_EQ(seen[0].at("method"), "POST");
  EXPECT_EQ(seen[0].at("path"), "/api/desktop/auth/login");
  EXPECT_EQ(seen[0].at("body"), "\uFFFD");
  EXPECT_EQ(seen[0].at("headers").at("Authorization"), "Bearer abc");
  EXPECT_EQ(seen[0].at("headers").at("Content-Type"), "application/json");
  EXPECT_FALSE(seen[0].at("headers").contains("REMOTE_ADDR"));
  EXPECT_EQ(seen[1].at("path"), "/unknown");
  ASSERT_EQ(statusOf(control().Delete("/requests")), 200);
  EXPECT_EQ(jsonOf(control().Get("/requests")), json::array());
}

TEST_F(ControlTest, ShowsTheNotesOfTheDatabase) {
  ASSERT_EQ(world.capture(world.accessToken(), noteOf("Rang")), 200);
  EXPECT_EQ(jsonOf(control().Get("/notes")), world.service.records().notes());
}

TEST_F(ControlTest, IsNoPartOfTheServiceItself) {
  EXPECT_EQ(statusOf(get("/requests")), 404);
  EXPECT_EQ(statusOf(control().Get("/login")), 404);
}

TEST(RequestLogTest, DropsTheOldestBeyondItsLimitAndJoinsHeaders) {
  RequestLog log;
  httplib::Request request;
  request.headers = {{"A", "1"}, {"A", "2"}};
  for (std::size_t at = 0; at <= RequestLog::LIMIT; ++at) {
    request.path = std::to_string(at);
    log.add(request);
  }
  EXPECT_EQ(log.requests().size(), RequestLog::LIMIT);
  EXPECT_EQ(log.requests()[0].at("path"), "1");
  EXPECT_EQ(log.requests()[0].at("headers"), json({{"A", "1, 2"}}));
}

TEST(RequestLogTest, IsKeptOnlyWithAControlPort) {
  TestWorld silent{ServiceSettings{}};
  EXPECT_EQ(statusOf(silent.client().Get("/login")), 200);
  EXPECT_TRUE(silent.service.requests().empty());
}

}  // namespace
}  // namespace notewick::service
