#include "client/lanes.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/support/fake_main_loop.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LanesTest : public testing::Test {
 protected:
  void enter(const std::string& call) {
    lanes->enter([this, call] { running.push_back(call); });
  }
  /// A call that has ended when it returns.
  void enterBriefly(const std::string& call) {
    lanes->enter([this, call] {
      running.push_back(call);
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
  std::vector<std::string> running;
};

TEST_F(LanesTest, CallsRunAtOnceWhileThereIsALane) {
  for (const auto* const call : {"a", "b", "c"}) enter(call);
  EXPECT_THAT(running, ElementsAre("a", "b"));
}

TEST_F(LanesTest, TheOthersRunInTheirOrderWhenALaneIsFree) {
  for (const auto* const call : {"a", "b", "c", "d"}) enter(call);
  leave();
  EXPECT_THAT(running, ElementsAre("a", "b", "c"));
  leave();
  EXPECT_THAT(running, ElementsAre("a", "b", "c", "d"));
}

TEST_F(LanesTest, ANewCallDoesNotOvertakeOneThatWaits) {
  for (const auto* const call : {"a", "b", "c"}) enter(call);
  lanes->leave();
  lanes->leave();
  enter("d");
  EXPECT_THAT(running, ElementsAre("a", "b"));
  loop.runPosted();
  EXPECT_THAT(running, ElementsAre("a", "b", "c", "d"));
}

TEST_F(LanesTest, CallsThatEndAtOnceDoNotAllRunInOneTurn) {
  for (const auto* const call : {"a", "b", "c", "d", "e"}) enterBriefly(call);
  EXPECT_THAT(running, ElementsAre("a", "b"));
  loop.runPosted();
  EXPECT_THAT(running, ElementsAre("a", "b", "c", "d", "e"));
}

TEST_F(LanesTest, HurriedCallsRunWithoutALaneAndLeaveNoLaneTooMany) {
  enter("a");
  enter("b");
  for (const auto* const call : {"c", "d", "e"}) enterBriefly(call);
  lanes->hurry();
  EXPECT_THAT(running, ElementsAre("a", "b"));
  loop.runPosted();
  EXPECT_THAT(running, ElementsAre("a", "b", "c", "d", "e"));
  enter("f");
  leave();
  enter("g");
  EXPECT_THAT(running, ElementsAre("a", "b", "c", "d", "e", "f"));
}

TEST_F(LanesTest, OnlyTheCallsThatWaitWhenItIsSaidAreHurried) {
  for (const auto* const call : {"a", "b", "c"}) enter(call);
  lanes->hurry();
  enter("d");
  loop.runPosted();
  EXPECT_THAT(running, ElementsAre("a", "b", "c"));
}

TEST_F(LanesTest, HurriedTwiceTheyStillRunOneATurn) {
  for (const auto* const call : {"a", "b", "c", "d"}) enter(call);
  lanes->hurry();
  enter("e");
  lanes->hurry();
  loop.post([this] { running.push_back("the next turn"); });
  loop.runPosted();
  EXPECT_THAT(running, ElementsAre("a", "b", "c", "the next turn", "d", "e"));
}

TEST_F(LanesTest, AHurriedCallMayDestroyTheLanes) {
  enter("a");
  enter("b");
  lanes->enter([this] { lanes.reset(); });
  enter("never");
  lanes->hurry();
  loop.runPosted();
  EXPECT_THAT(running, ElementsAre("a", "b"));
}

TEST_F(LanesTest, AfterTheEndNothingRuns) {
  for (const auto* const call : {"a", "b", "c", "d"}) enter(call);
  running.clear();
  lanes->leave();
  lanes->hurry();
  lanes.reset();
  loop.runPosted();
  EXPECT_THAT(running, IsEmpty());
}

}  // namespace
}  // namespace notewick
