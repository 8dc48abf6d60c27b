#include "platform/linux/clock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <limits>
#include <tuple>

#include "tests/support/linux_session.h"

namespace notewick {
namespace {

using std::chrono::duration;

// 2024-06-11 09:05:07 UTC.
constexpr duration<double> SUMMER{1718096707.0 - 978307200.0};
// 2024-01-02 23:59:59.9 UTC.
constexpr duration<double> WINTER{1704239999.9 - 978307200.0};

using Civil = std::tuple<int, int, int, int, int, int>;

class SystemClockTest : public testing::Test {
 protected:
  ~SystemClockTest() override { unsetenv("TZ"); }

  [[nodiscard]] Civil shown(duration<double> time) const {
    const CivilTime civil = clock_.localTime(time);
    return {civil.year, civil.month, civil.day, civil.hour, civil.minute, civil.second};
  }

  static void zoneIs(const std::string& zone) { setenv("TZ", zone.c_str(), 1); }

  SystemClock clock_;
};

TEST_F(SystemClockTest, NowIsInSecondsSinceTheFirstDayOf2001WithFractions) {
  const auto reference = static_cast<double>(std::time(nullptr)) - 978307200.0;
  EXPECT_NEAR(clock_.now().count(), reference, 60);
  const auto wholeSecond = [&] { return std::fmod(clock_.now().count(), 1) == 0; };
  EXPECT_FALSE(wholeSecond() && wholeSecond());
}

TEST_F(SystemClockTest, ShowsTheUsersTimeZoneInSummerAndInWinter) {
  zoneIs("Europe/Berlin");
  EXPECT_EQ(shown(SUMMER), Civil(2024, 6, 11, 11, 5, 7));
  EXPECT_EQ(shown(WINTER), Civil(2024, 1, 3, 0, 59, 59));
}

TEST_F(SystemClockTest, AFractionBelongsToTheSecondThatHasBegunAlsoBefore2001) {
  zoneIs("UTC");
  EXPECT_EQ(shown(duration<double>(0.999)), Civil(2001, 1, 1, 0, 0, 0));
  EXPECT_EQ(shown(duration<double>(-0.001)), Civil(2000, 12, 31, 23, 59, 59));
}

TEST_F(SystemClockTest, FollowsAZoneFileThatIsReplacedOrWrittenOver) {
  namespace fs = std::filesystem;
  const fs::path zones = "/usr/share/zoneinfo";
  const fs::path file = LinuxSession::current().home() + "/localtime";
  fs::copy_file(zones / "Europe/Berlin", file);
  const std::string zone = std::string(":").append(file.string());
  zoneIs(zone);
  EXPECT_EQ(shown(SUMMER), Civil(2024, 6, 11, 11, 5, 7));

  fs::copy_file(zones / "America/St_Johns", file.string() + ".new");
  fs::rename(file.string() + ".new", file);
  EXPECT_EQ(shown(SUMMER), Civil(2024, 6, 11, 6, 35, 7));

  fs::copy_file(zones / "Australia/Sydney", file, fs::copy_options::overwrite_existing);
  EXPECT_EQ(shown(SUMMER), Civil(2024, 6, 11, 19, 5, 7));
  EXPECT_EQ(std::getenv("TZ"), zone);
}

TEST_F(SystemClockTest, WithoutASettingShowsTheSystemsZone) {
  unsetenv("TZ");
  const Civil system = shown(SUMMER);
  zoneIs(":/etc/localtime");
  EXPECT_EQ(shown(SUMMER), system);
}

TEST_F(SystemClockTest, TimesBeyondTheCalendarAreShownAsTheNearestInsideIt) {
  zoneIs("UTC");
  EXPECT_EQ(std::get<0>(shown(duration<double>(1e300))), 9999);
  EXPECT_EQ(std::get<0>(shown(duration<double>(-1e300))), 1);
  EXPECT_EQ(std::get<0>(shown(duration<double>(std::numeric_limits<double>::max()))), 9999);
}

}  // namespace
}  // namespace notewick
