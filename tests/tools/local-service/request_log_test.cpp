#include "tools/local-service/request_log.h"

#include <gtest/gtest.h>

namespace notewick::service {
namespace {

TEST(RequestLogTest, KeepsRequestsInTheirOrder) {
  RequestLog log;
  log.add({.method = "GET", .path = "/a"});
  log.add({.method = "POST", .path = "/b", .body = "x"});
  const auto requests = log.requests();
  ASSERT_EQ(requests.size(), 2U);
  EXPECT_EQ(requests[0].path, "/a");
  EXPECT_EQ(requests[1].body, "x");
}

TEST(RequestLogTest, DropsTheOldestBeyondItsLimit) {
  RequestLog log;
  for (std::size_t at = 0; at <= RequestLog::LIMIT; ++at) {
    log.add({.method = "GET", .path = std::to_string(at)});
  }
  EXPECT_EQ(log.requests().size(), RequestLog::LIMIT);
  EXPECT_EQ(log.requests().front().path, "1");
}

TEST(RequestLogTest, ForgetsAllWhenCleared) {
  RequestLog log;
  log.add({.method = "GET", .path = "/a"});
  log.clear();
  EXPECT_TRUE(log.requests().empty());
}

}  // namespace
}  // namespace notewick::service
