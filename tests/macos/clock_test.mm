#include "platform/macos/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <tuple>

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

TEST_F(MacosClockTest, ShowsTheCalendarOfTheTimeZoneAsItIsNow) {
  setenv("TZ", "UTC", 1);
  const CivilTime utc = clock_.localTime(INSTANT);
  EXPECT_EQ(std::tie(utc.year, utc.month, utc.day), std::tuple(2024, 5, 2));
  EXPECT_EQ(std::tie(utc.hour, utc.minute, utc.second), std::tuple(23, 30, 15));
  setenv("TZ", "Asia/Tokyo", 1);
  EXPECT_EQ(clock_.localTime(INSTANT).day, 3);
  EXPECT_EQ(clock_.localTime(INSTANT).hour, 8);
}

}  // namespace
}  // namespace notewick
