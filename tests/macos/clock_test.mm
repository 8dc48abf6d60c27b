#include "platform/macos/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace notewick {
namespace {

/// 2024-05-02 23:30:15 UTC.
constexpr std::chrono::duration<double> INSTANT{736385415.25};

class MacosClockTest : public testing::Test {
 protected:
  ~MacosClockTest() override { unsetenv("TZ"); }
  CocoaClock clock_;
};

TEST_F(MacosClockTest, CountsFromTheBeginningOf2001) {
  const auto sinceUnixEpoch = std::chrono::system_clock::now().time_since_epoch();
  const std::chrono::duration<double> expected = sinceUnixEpoch - std::chrono::seconds(978307200);
  EXPECT_NEAR(clock_.now().count(), expected.count(), 5);
}

TEST_F(MacosClockTest, ShowsTheCalendarOfTheTimeZone) {
  setenv("TZ", "UTC", 1);
  const CivilTime shown = clock_.localTime(INSTANT);
  EXPECT_EQ(shown.year, 2024);
  EXPECT_EQ(shown.month, 5);
  EXPECT_EQ(shown.day, 2);
  EXPECT_EQ(shown.hour, 23);
  EXPECT_EQ(shown.minute, 30);
  EXPECT_EQ(shown.second, 15);
}

TEST_F(MacosClockTest, FollowsTheTimeZoneWhileRunning) {
  setenv("TZ", "UTC", 1);
  EXPECT_EQ(clock_.localTime(INSTANT).day, 2);
  setenv("TZ", "Asia/Tokyo", 1);
  EXPECT_EQ(clock_.localTime(INSTANT).day, 3);
  EXPECT_EQ(clock_.localTime(INSTANT).hour, 8);
}

}  // namespace
}  // namespace notewick
