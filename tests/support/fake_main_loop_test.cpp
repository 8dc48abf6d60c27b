#include "tests/support/fake_main_loop.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FakeMainLoopTest : public testing::Test {
 protected:
  std::function<void()> note(const std::string& what) {
    return [this, what] { happened.push_back(what); };
  }

  FakeClock clock;
  Trace trace;
  FakeMainLoop loop{clock, trace};
  std::vector<std::string> happened;
};

TEST_F(FakeMainLoopTest, RunsTimersInTheOrderOfTheirMoments) {
  const auto late = loop.startOneShot(20, note("late"));
  const auto early = loop.startRepeating(8, note("early"));
  loop.advance(20);
  EXPECT_THAT(happened, ElementsAre("early", "early", "late"));
  EXPECT_EQ(clock.now(), Date(20));
}

TEST_F(FakeMainLoopTest, NeverRunsACancelledTimer) {
  auto timer = loop.startOneShot(4, note("cancelled"));
  const auto earlier = loop.startOneShot(4, note("other"));
  const auto canceller = loop.startOneShot(3, [&] { timer.reset(); });
  loop.advance(10);
  EXPECT_THAT(happened, ElementsAre("other"));
}

TEST_F(FakeMainLoopTest, ATimerMayEndItselfWhileItRuns) {
  std::unique_ptr<Timer> timer;
  timer = loop.startRepeating(1, [&] {
    timer.reset();
    happened.push_back("once");
  });
  loop.advance(5);
  EXPECT_THAT(happened, ElementsAre("once"));
}

TEST_F(FakeMainLoopTest, PostedActionsRunInALaterTurn) {
  loop.post([this] { loop.post(note("second")), happened.push_back("first"); });
  EXPECT_THAT(happened, IsEmpty());
  loop.runPosted();
  EXPECT_THAT(happened, ElementsAre("first", "second"));
}

TEST_F(FakeMainLoopTest, FiringsMissedInASleepAreNotMadeUpFor) {
  const auto timer = loop.startRepeating(15, note("sample"));
  loop.sleepMachine(3600);
  EXPECT_THAT(happened, ElementsAre("sample"));
  loop.advance(15);
  EXPECT_THAT(happened, ElementsAre("sample", "sample"));
}

TEST_F(FakeMainLoopTest, TimersThatFireLateKeepTheirPhase) {
  loop.fireLate(0.4);
  std::vector<double> lateness;
  const auto timer = loop.startRepeating(15, [&] {
    lateness.push_back((clock.now() - Date(15.0 * double(lateness.size() + 1))).count());
  });
  loop.advance(15.0 * 200);
  EXPECT_EQ(lateness.size(), 200u);
  EXPECT_THAT(lateness, testing::Each(testing::AllOf(testing::Ge(0), testing::Lt(0.4))));
  EXPECT_GT(*std::ranges::max_element(lateness), 0.3);
}

}  // namespace
}  // namespace notewick
