#include "platform/linux/uuid_source.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace notewick {
namespace {

TEST(RandomUuidSourceTest, GivesRandomUuidsInUpperCaseText) {
  RandomUuidSource uuids;
  for (int sample = 0; sample < 100; ++sample) {
    EXPECT_THAT(uuids.next(), testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-"
                                                    "[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
  }
}

TEST(RandomUuidSourceTest, NeverGivesTheSameOneTwice) {
  RandomUuidSource uuids;
  std::set<std::string> seen;
  for (int sample = 0; sample < 10'000; ++sample) EXPECT_TRUE(seen.insert(uuids.next()).second);
}

}  // namespace
}  // namespace notewick
