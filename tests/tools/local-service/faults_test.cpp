#include "tools/local-service/faults.h"

#include <gtest/gtest.h>

#include <future>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

using nlohmann::json;

class FaultsTest : public testing::Test {
 protected:
  httplib::Response pass(const std::string& path = "/a") {
    httplib::Request request;
    request.path = path;
    httplib::Response response;
    faults.pass(request, response, [this](const httplib::Request&, httplib::Response& own) {
      ++served;
      own.status = 200;
    });
    return response;
  }

  int hits(int requests) {
    int count = 0;
    for (int at = 0; at < requests; ++at) count += pass().status == 503;
    return count;
  }

  Faults faults;
  int served = 0;
};

TEST_F(FaultsTest, RefuseUnknownFieldsAndWrongValuesAndThenAddNone) {
  for (const auto& form : json::parse(R"([
         7, {"paths": "/"}, {"path": 1}, {"times": 0}, {"times": -1}, {"times": "1"}, {"times": 1.5},
         {"rate": "often"}, {"rate": -0.1}, {"rate": 1.1}, {"delay": -1}, {"status": null}, {"status": 99},
         {"status": 1000}, {"cut": "late"}, {"headers": "x"},
         {"headers": {"a": 1}}])")) {
    EXPECT_ANY_THROW(faults.add({{{"status", 503}}, form})) << form;
  }
  EXPECT_EQ(pass().status, 200);
}

TEST_F(FaultsTest, AnswerAsTheySayAndLeaveTheServiceUntouched) {
  faults.add({{"status", 302}, {"headers", {{"Location", "/x"}}}, {"body", "no"}});
  const auto answer = pass();
  EXPECT_EQ(answer.status, 302);
  EXPECT_EQ(answer.get_header_value("Location"), "/x");
  EXPECT_EQ(answer.get_header_value("Content-Type"), "application/json");
  EXPECT_EQ(answer.body, "no");
  EXPECT_EQ(served, 0);
  faults.clear();
  faults.add({{"body", {{"error", "Busy"}}}});
  EXPECT_EQ(pass().status, 200);
  EXPECT_EQ(pass().body, R"({"error":"Busy"})") << "a body that is no text is its JSON";
}

TEST_F(FaultsTest, HitTheNextRequestsToTheirPathInTheirOrder) {
  faults.add(
      json::parse(R"([{"path": "/a", "status": 503, "times": 1}, {"path": "/a", "status": 429}])"));
  EXPECT_EQ(pass("/b").status, 200);
  EXPECT_EQ(pass().status, 503);
  EXPECT_EQ(pass().status, 429);
  EXPECT_EQ(pass().status, 429);
  faults.clear();
  EXPECT_EQ(pass().status, 200);
}

TEST_F(FaultsTest, HitByRateAndCountOnlyWhatTheyHit) {
  faults.add({{"status", 503}, {"rate", 0}});
  EXPECT_EQ(hits(20), 0);
  faults.add({{"status", 503}, {"rate", 0.3}});
  const int hit = hits(200);
  EXPECT_GT(hit, 35);
  EXPECT_LT(hit, 85);
  faults.clear();
  faults.add({{"status", 503}, {"rate", 0.5}, {"times", 10}});
  EXPECT_EQ(hits(100), 10);
}

TEST_F(FaultsTest, ADelayComesBeforeTheServicesOwnAnswer) {
  faults.add({{"delay", 0.2}});
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(pass().status, 200);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(200));
}

TEST_F(FaultsTest, DelaysEndWhenTold) {
  faults.add({{"delay", 3600}});
  auto answer = std::async(std::launch::async, [this] { return pass().status; });
  faults.endDelays();
  EXPECT_EQ(answer.get(), 200);
}

class CutTest : public testing::Test {
 protected:
  void cut(const std::string& when, const json& answer = json::object()) {
    json fault = {{"cut", when}, {"times", 1}};
    fault.update(answer);
    world.service.faults().add(fault);
  }

  std::string received() {
    std::string body;
    EXPECT_FALSE(world.client().Get("/login", [&](const char* data, std::size_t size) {
      body.append(data, size);
      return true;
    }));
    return body;
  }

  TestWorld world;
};

TEST_F(CutTest, ComesBeforeOrAfterTheServiceActed) {
  const auto token = world.accessToken();
  for (const auto* const when : {"before", "after"}) {
    cut(when);
    EXPECT_EQ(world.capture(token, noteOf(when)), 0);
  }
  ASSERT_EQ(world.service.records().notes().size(), 1U);
  EXPECT_EQ(world.service.records().notes()[0].at("input"), "after");
}

TEST_F(CutTest, InTheMiddleLeavesHalfOfTheBody) {
  const auto whole = world.client().Get("/login")->body;
  cut("middle");
  EXPECT_EQ(received(), whole.substr(0, whole.size() / 2));
  cut("middle", {{"body", "four"}});
  EXPECT_EQ(received(), "fo");
  cut("middle", {{"status", 200}});
  EXPECT_EQ(received(), "");
}

}  // namespace
}  // namespace notewick::service
