#include "detect/stamps.h"

#include "tests/support/world.h"

namespace notewick {
namespace {

using StampsTest = WorldTest;

TEST_F(StampsTest, ShowTheWallClock) {
  clock.setLocal({2024, 5, 2, 14, 5, 9});
  EXPECT_EQ(dayStamp(), "2024-05-02");
  EXPECT_EQ(timeStamp(), "14:05");
  EXPECT_EQ(secondStamp(), "14:05:09");
}

TEST_F(StampsTest, FillUpWithZeros) {
  clock.setLocal({987, 1, 3, 0, 0, 0});
  EXPECT_EQ(dayStamp(), "0987-01-03");
  EXPECT_EQ(secondStamp(), "00:00:00");
}

TEST_F(StampsTest, TellOtherDatesToo) {
  const auto date = clock.dateOf({2001, 12, 31, 23, 59, 59}) + Date(0.999);
  EXPECT_EQ(dayStamp(date), "2001-12-31");
  EXPECT_EQ(timeStamp(date), "23:59");
}

TEST_F(StampsTest, FollowTheTimeZoneAsItIsNow) {
  clock.setLocal({2024, 5, 2, 23, 30, 0});
  clock.setZone(3);
  EXPECT_EQ(dayStamp(), "2024-05-03");
  EXPECT_EQ(timeStamp(), "00:30");
  clock.setZone(-3.5);
  EXPECT_EQ(dayStamp(), "2024-05-02");
  EXPECT_EQ(timeStamp(), "18:00");
}

}  // namespace
}  // namespace notewick
