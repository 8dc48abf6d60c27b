#include "tools/local-service/faults.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

using nlohmann::json;
using namespace std::chrono_literals;

Fault fault(const json& form) {
  return faultFromJson(form);
}

TEST(FaultFormTest, ReadsEveryField) {
  const auto read = fault({{"path", "/login"},
                           {"times", 3},
                           {"rate", 0.5},
                           {"delay", 1.25},
                           {"status", 302},
                           {"headers", {{"Location", "/elsewhere"}}},
                           {"contentType", "text/plain"},
                           {"body", "no"},
                           {"cut", "middle"}});
  EXPECT_EQ(read.path, "/login");
  EXPECT_EQ(read.times, 3U);
  EXPECT_EQ(read.rate, 0.5);
  EXPECT_EQ(read.delay, 1250ms);
  ASSERT_TRUE(read.answer);
  EXPECT_EQ(read.answer->status, 302);
  EXPECT_EQ(read.answer->headers.at(0).second, "/elsewhere");
  EXPECT_EQ(read.answer->contentType, "text/plain");
  EXPECT_EQ(read.answer->body, "no");
  EXPECT_EQ(read.cut, Cut::MidBody);
  EXPECT_FALSE(read.ignoresRequest);
}

TEST(FaultFormTest, ABodyThatIsNoTextIsSentAsItsJson) {
  EXPECT_EQ(fault({{"body", {{"error", "Busy"}}}}).answer->body, R"({"error":"Busy"})");
}

TEST(FaultFormTest, RefusesUnknownFieldsAndWrongValues) {
  for (const auto& form : std::vector<json>{json::array(),
                                            7,
                                            {{"paths", "/"}},
                                            {{"path", 1}},
                                            {{"times", 0}},
                                            {{"times", "1"}},
                                            {{"rate", 1.5}},
                                            {{"rate", -1}},
                                            {{"delay", -1}},
                                            {{"delay", 1e9}},
                                            {{"status", 99}},
                                            {{"status", 1000}},
                                            {{"cut", "late"}},
                                            {{"garbage", 0}},
                                            {{"garbage", true}},
                                            {{"headers", "x"}},
                                            {{"headers", {{"a", 1}}}},
                                            {{"contentType", nullptr}}}) {
    EXPECT_THROW(static_cast<void>(fault(form)), std::runtime_error) << form;
  }
}

class FaultsTest : public testing::Test {
 protected:
  void set(const json& form) { world.service.faults().add(fault(form)); }
  int hits(int requests) {
    int count = 0;
    for (int at = 0; at < requests; ++at) {
      count += statusOf(world.client().Get("/login")) == 503;
    }
    return count;
  }
  std::size_t notes() { return world.service.notes().all().size(); }

  TestWorld world;
};

TEST_F(FaultsTest, GivesAnyStatusFromTwoHundredOn) {
  for (const int status : {200, 201, 204, 302, 400, 401, 404, 418, 429, 500, 503, 599, 799}) {
    set({{"status", status}, {"times", 1}, {"body", {{"error", "told to"}}}});
    EXPECT_EQ(statusOf(world.client().Get("/login")), status);
  }
}

TEST_F(FaultsTest, HitsTheNextRequestsToItsPathOnly) {
  set({{"path", "/login"}, {"status", 503}, {"times", 2}});
  EXPECT_EQ(statusOf(world.client().Get("/case-notes")), 303);
  EXPECT_EQ(hits(5), 2);
}

TEST_F(FaultsTest, HitsByRate) {
  set({{"status", 503}, {"rate", 0.3}});
  const int hit = hits(200);
  EXPECT_GT(hit, 35);
  EXPECT_LT(hit, 85);
}

TEST_F(FaultsTest, ByRateCountsOnlyTheRequestsItHit) {
  set({{"status", 503}, {"rate", 0.5}, {"times", 10}});
  EXPECT_EQ(hits(100), 10);
}

TEST_F(FaultsTest, AtRateZeroHitsNothing) {
  set({{"status", 503}, {"rate", 0}});
  EXPECT_EQ(hits(20), 0);
}

TEST_F(FaultsTest, ADelayComesBeforeTheServicesOwnAnswer) {
  set({{"delay", 0.2}, {"times", 1}});
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(statusOf(world.client().Get("/login")), 200);
  EXPECT_GE(std::chrono::steady_clock::now() - start, 200ms);
}

TEST_F(FaultsTest, AReplacedAnswerLeavesTheServiceUntouched) {
  const auto access = world.accessToken();
  set({{"status", 500}, {"times", 1}});
  EXPECT_EQ(statusOf(world.capture(access, "x")), 500);
  EXPECT_EQ(notes(), 0U);
}

TEST_F(FaultsTest, CutBeforeTheServiceSeesTheRequest) {
  const auto access = world.accessToken();
  set({{"cut", "before"}, {"times", 1}});
  EXPECT_EQ(statusOf(world.capture(access, "x")), 0);
  EXPECT_EQ(notes(), 0U);
  EXPECT_EQ(statusOf(world.capture(access, "x")), 200);
}

TEST_F(FaultsTest, CutAfterTheServiceActed) {
  const auto access = world.accessToken();
  set({{"cut", "after"}, {"times", 1}});
  EXPECT_EQ(statusOf(world.capture(access, "x")), 0);
  EXPECT_EQ(notes(), 1U);
}

TEST_F(FaultsTest, CutInTheMiddleOfTheBody) {
  set({{"cut", "middle"}, {"times", 1}});
  std::string received;
  std::string length;
  const auto result = world.client().Get(
      "/login",
      [&](const httplib::Response& response) {
        length = response.get_header_value("Content-Length");
        return true;
      },
      [&](const char* data, std::size_t size) {
        received.append(data, size);
        return true;
      });
  EXPECT_FALSE(result);
  EXPECT_EQ(received.size(), std::stoul(length) / 2);
  EXPECT_TRUE(received.starts_with("<!doctype html>"));
}

TEST_F(FaultsTest, CutInTheMiddleOfAnEmptyBodyGivesNoAnswer) {
  set({{"cut", "middle"}, {"times", 1}});
  EXPECT_EQ(statusOf(world.client().Get("/")), 0);
}

TEST_F(FaultsTest, GarbageIsThatManyBytesWhichAreNoJson) {
  set({{"garbage", 5000}, {"times", 1}});
  const auto answer = world.client().Get("/api/desktop/participants");
  ASSERT_EQ(statusOf(answer), 200);
  EXPECT_EQ(answer->get_header_value("Content-Type"), "application/json");
  EXPECT_EQ(answer->body.size(), 5000U);
  EXPECT_TRUE(jsonOf(answer).is_null());
}

TEST_F(FaultsTest, HeadersAndBodyAreAsGiven) {
  set({{"status", 302},
       {"headers", {{"Location", "/x"}}},
       {"body", "<p>"},
       {"contentType", "text/html"},
       {"times", 1}});
  const auto answer = world.client().Get("/login");
  ASSERT_EQ(statusOf(answer), 302);
  EXPECT_EQ(answer->get_header_value("Location"), "/x");
  EXPECT_EQ(answer->get_header_value("Content-Type"), "text/html");
  EXPECT_EQ(answer->body, "<p>");
}

}  // namespace
}  // namespace notewick::service
