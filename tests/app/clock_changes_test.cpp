#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr double HOUR = 3600;
constexpr double DAY = 24 * HOUR;
constexpr double YEAR = 365 * DAY;

/// Somebody sets the clock, the machine is suspended, the user travels. Timers go on all the while.
class ClockChanges : public WorldTest {
 protected:
  ClockChanges() {
    loop.fireLate(0);
    runsKnowing({"Tobias Hargreave"});
    samples(1);
    forgetThePast();
  }

  void works() { sees({"Tobias Hargreave"}, 4); }

  /// The pending items, "2024-05-02 ~1 min".
  [[nodiscard]] std::vector<std::string> caughtWork() const {
    std::vector<std::string> items;
    for (const auto& pending : app().pendings)
      items.push_back(pending.day + " ~" + std::to_string(pending.observedMinutes) + " min");
    return items;
  }
};

// --- The clock is set ----------------------------------------------------------------------------

TEST_F(ClockChanges, SetForwardItEndsASessionAtTheNextSampleAndOnce) {
  works();
  clock.jump(HOUR);
  looksElsewhere(1);
  EXPECT_THAT(caughtWork(), ElementsAre("2024-05-02 ~1 min"));
  works();
  clock.jump(YEAR);
  looksElsewhere(41);
  EXPECT_THAT(caughtWork(), ElementsAre("2024-05-02 ~1 min", "2025-05-02 ~1 min"));
  EXPECT_THAT(notifier.shown, SizeIs(2));
}

TEST_F(ClockChanges, ASessionOutlivesAClockThatIsSetBack) {
  works();
  clock.jump(-HOUR);
  looksElsewhere(240 + 40);
  EXPECT_THAT(app().sessions, SizeIs(1));
  looksElsewhere(1);
  EXPECT_THAT(app().sessions, IsEmpty());
  EXPECT_THAT(caughtWork(), ElementsAre("2024-05-02 ~1 min"));
}

TEST_F(ClockChanges, SetBackByAYearAndCorrectedItEndsTheSessionOnce) {
  works();
  clock.jump(-YEAR);
  looksElsewhere(60);
  EXPECT_THAT(caughtWork(), IsEmpty());
  clock.jump(YEAR);
  looksElsewhere(41);
  EXPECT_THAT(caughtWork(), ElementsAre("2024-05-02 ~1 min"));
  EXPECT_THAT(notifier.shown, SizeIs(1));
}

// The span of such a session is what the formula says, from the first sighting to the last.
TEST_F(ClockChanges, SetDuringWorkItMakesTheSpanLongerOrTooShort) {
  works();
  clock.jump(HOUR);
  works();
  EXPECT_EQ(app().sessions.begin()->second.lastSeen - app().sessions.begin()->second.firstSeen,
            Date(HOUR + 7 * 15));
  looksElsewhere(41);
  EXPECT_THAT(caughtWork(), ElementsAre("2024-05-02 ~2 min"));
  works();
  clock.jump(-HOUR);
  works();
  looksElsewhere(41);
  EXPECT_THAT(app().sessions, IsEmpty());
  EXPECT_THAT(caughtWork(), ElementsAre("2024-05-02 ~2 min"));
}

TEST_F(ClockChanges, HoweverItIsSetSamplesAndRetriesGoOnAndNoneIsRepeated) {
  service.isUnreachable("offline");
  app().enqueueNote(app().participants.at(0), "Called the school", 15, "2024-05-02");
  looksElsewhere(4);
  for (const double jump : {HOUR, -HOUR, YEAR, -YEAR, 0.5, -15.0}) {
    clock.jump(jump);
    service.forgetRequests();
    const auto lines = watchLogLines().size();
    looksElsewhere(40);
    EXPECT_EQ(watchLogLines().size(), lines + 40) << jump;
    EXPECT_THAT(service.requests, SizeIs(10)) << jump;
  }
  service.recovers();
  looksElsewhere(8);
  EXPECT_THAT(service.backend.notes, SizeIs(1));
}

// --- The machine is suspended --------------------------------------------------------------------

TEST_F(ClockChanges, ANightOfSuspensionIsNoWork) {
  works();
  clock.jump(DAY);
  works();
  looksElsewhere(41);
  EXPECT_THAT(caughtWork(), ElementsAre("2024-05-03 ~2 min")) << "the window was open all the time";
  works();
  looksElsewhere(1);
  clock.jump(DAY);
  looksElsewhere(1);
  EXPECT_THAT(caughtWork(), ElementsAre("2024-05-03 ~2 min", "2024-05-04 ~1 min"));
}

// --- Wall clocks change --------------------------------------------------------------------------

TEST_F(ClockChanges, BothNightsOfSummerTimeAreWorkLikeAnyOther) {
  const struct {
    double before, after;
    CivilTime lastMinute;
  } nights[] = {{1, 2, {2024, 3, 31, 1, 59, 0}}, {2, 1, {2024, 10, 27, 2, 59, 0}}};
  for (const auto& night : nights) {
    clock.setZone(night.before);
    clock.setLocal(night.lastMinute);
    works();
    clock.setZone(night.after);
    works();
    EXPECT_EQ(app().sessions.begin()->second.sightings, 8);
    looksElsewhere(41);
  }
  EXPECT_THAT(caughtWork(), ElementsAre("2024-03-31 ~2 min", "2024-10-27 ~2 min"));
}

TEST_F(ClockChanges, ATravellerHasOneItemForEachDay) {
  clock.setLocal({2024, 5, 3, 0, 5, 0});
  for (const double zone : {2.0, -5.0, 2.0, -5.0}) {
    clock.setZone(zone);
    works();
    looksElsewhere(41);
  }
  EXPECT_THAT(caughtWork(), ElementsAre("2024-05-03 ~2 min", "2024-05-02 ~2 min"));
}

}  // namespace
}  // namespace notewick
