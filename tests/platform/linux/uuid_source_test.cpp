#include "platform/linux/uuid_source.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace notewick {
namespace {

TEST(RandomUuidSourceTest, GivesRandomUuidsInUpperCaseTextAndNeverTheSameTwice) {
  RandomUuidSource uuids;
  std::set<std::string> seen;
  for (int sample = 0; sample < 10'000; ++sample) EXPECT_TRUE(seen.insert(uuids.next()).second);
  EXPECT_THAT(seen, testing::Each(testing::MatchesRegex(
                        "[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}")));
}

}  // namespace
}  // namespace notewick
