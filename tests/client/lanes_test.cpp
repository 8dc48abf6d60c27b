#include "client/lanes.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/support/fake_main_loop.h"

namespace notewick {
namespace {

using testing::ElementsAre;

/// Two lanes.
class LanesTest : public testing::Test {
 protected:
  void enter(const std::vector<std::string>& calls) {
    for (const auto& call : calls) lanes->enter([this, call] { started.push_back(call); });
  }
  /// Calls that have ended when they return.
  void enterBriefly(const std::vector<std::string>& calls) {
    for (const auto& call : calls)
      lanes->enter([this, call] {
        started.push_back(call);
        lanes->leave();
      });
  }
  void leave() {
    lanes->leave();
    loop.runPosted();
  }

  FakeClock clock;
  Trace trace;
  FakeMainLoop loop{clock, trace};
  std::optional<Lanes> lanes{std::in_place, loop, 2};
  std::vector<std::string> started;
};

TEST_F(LanesTest, CallsStartAtOnceWhileThereIsALaneThenInTheirOrder) {
  enter({"a", "b", "c", "d"});
  EXPECT_THAT(started, ElementsAre("a", "b"));
  leave();
  EXPECT_THAT(started, ElementsAre("a", "b", "c"));
  leave();
  EXPECT_THAT(started, ElementsAre("a", "b", "c", "d"));
}

TEST_F(LanesTest, ANewCallDoesNotOvertakeOneThatWaits) {
  enter({"a", "b", "c"});
  lanes->leave();
  lanes->leave();
  enter({"d"});
  EXPECT_THAT(started, ElementsAre("a", "b"));
  loop.runPosted();
  EXPECT_THAT(started, ElementsAre("a", "b", "c", "d"));
}

TEST_F(LanesTest, CallsThatEndAtOnceDoNotAllStartInOneTurn) {
  enterBriefly({"a", "b", "c", "d", "e"});
  EXPECT_THAT(started, ElementsAre("a", "b"));
  loop.runPosted();
  EXPECT_THAT(started, ElementsAre("a", "b", "c", "d", "e"));
}

TEST_F(LanesTest, HurriedCallsStartWithoutALaneAndLeaveNoLaneTooMany) {
  enter({"a", "b"});
  enterBriefly({"c", "d", "e"});
  lanes->hurry();
  EXPECT_THAT(started, ElementsAre("a", "b"));
  loop.runPosted();
  EXPECT_THAT(started, ElementsAre("a", "b", "c", "d", "e"));
  enter({"f"});
  leave();
  enter({"g"});
  EXPECT_THAT(started, ElementsAre("a", "b", "c", "d", "e", "f"));
}

TEST_F(LanesTest, OnlyTheCallsThatWaitAtThatMomentAreHurried) {
  enter({"a", "b", "c"});
  lanes->hurry();
  enter({"d"});
  loop.runPosted();
  leave();
  EXPECT_THAT(started, ElementsAre("a", "b", "c")) << "two are under way in the two lanes";
}

TEST_F(LanesTest, HurriedTwiceTheyStillStartOneATurn) {
  enter({"a", "b", "c", "d"});
  lanes->hurry();
  enter({"e"});
  lanes->hurry();
  loop.post([this] { started.push_back("the next turn"); });
  loop.runPosted();
  EXPECT_THAT(started, ElementsAre("a", "b", "c", "the next turn", "d", "e"));
}

TEST_F(LanesTest, AHurriedCallMayDestroyTheLanes) {
  enter({"a", "b"});
  lanes->enter([this] { lanes.reset(); });
  enter({"never"});
  lanes->hurry();
  loop.runPosted();
  EXPECT_THAT(started, ElementsAre("a", "b"));
}

TEST_F(LanesTest, AfterTheEndNothingStarts) {
  enter({"a", "b", "c", "d"});
  lanes->leave();
  lanes->hurry();
  lanes.reset();
  loop.runPosted();
  EXPECT_THAT(started, ElementsAre("a", "b"));
}

}  // namespace
}  // namespace notewick
