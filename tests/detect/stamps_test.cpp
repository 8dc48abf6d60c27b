#include "detect/stamps.h"

#include "tests/support/world.h"

namespace notewick {
namespace {

using StampsTest = WorldTest;

TEST_F(StampsTest, ShowTheWallClockFilledUpWithZeros) {
  clock.setLocal({987, 1, 3, 14, 5, 9});
  EXPECT_EQ(dayStamp(), "0987-01-03");
  EXPECT_EQ(timeStamp(), "14:05");
  EXPECT_EQ(secondStamp(), "14:05:09");
}

TEST_F(StampsTest, ShowAnyOtherMoment) {
  const auto date = clock.dateOf({2001, 12, 31, 23, 59, 59}) + Date(0.999);
  EXPECT_EQ(dayStamp(date), "2001-12-31");
  EXPECT_EQ(timeStamp(date), "23:59");
}

TEST_F(StampsTest, FollowTheTimeZoneAsItIsNow) {
  clock.setLocal({2024, 5, 2, 23, 30, 0});
  clock.setZone(3);
  EXPECT_EQ(dayStamp() + " " + timeStamp(), "2024-05-03 00:30");
  clock.setZone(-3.5);
  EXPECT_EQ(dayStamp() + " " + timeStamp(), "2024-05-02 18:00");
}

}  // namespace
}  // namespace notewick
