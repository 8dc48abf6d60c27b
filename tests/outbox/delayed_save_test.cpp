#include "outbox/delayed_save.h"

#include <optional>

#include "tests/support/world.h"

namespace notewick {
namespace {

class DelayedSaveTest : public WorldTest {
 protected:
  DelayedSaveTest() { loop.fireLate(0); }

  int saves = 0;
  std::optional<DelayedSave> save{std::in_place, [this] { ++saves; }};
};

TEST_F(DelayedSaveTest, ASaveThatMayWaitComesInTime) {
  save->within(1);
  advance(0.999);
  EXPECT_EQ(saves, 0);
  advance(0.001);
  EXPECT_EQ(saves, 1);
}

TEST_F(DelayedSaveTest, ThoseThatComeMeanwhileJoinItAndDoNotPutItOff) {
  for (int change = 0; change < 4; ++change) {
    save->within(1);
    advance(0.25);
  }
  EXPECT_EQ(saves, 1);
  advance(10);
  EXPECT_EQ(saves, 1);
}

TEST_F(DelayedSaveTest, TheMoreUrgentOneTakesTheOtherAlong) {
  save->within(1);
  save->within(0.02);
  advance(0.02);
  EXPECT_EQ(saves, 1);
  advance(10);
  EXPECT_EQ(saves, 1);
}

TEST_F(DelayedSaveTest, TheLessUrgentOneDoesNotPutOffTheOther) {
  save->within(0.02);
  save->within(1);
  advance(0.02);
  EXPECT_EQ(saves, 1);
}

TEST_F(DelayedSaveTest, ASaveAtOnceTakesAlongWhatWaits) {
  save->within(1);
  save->now();
  EXPECT_EQ(saves, 1);
  advance(10);
  EXPECT_EQ(saves, 1);
}

TEST_F(DelayedSaveTest, AfterASaveTheNextOneWaitsAnew) {
  save->within(1);
  advance(1);
  save->within(1);
  advance(0.999);
  EXPECT_EQ(saves, 1);
  advance(0.001);
  EXPECT_EQ(saves, 2);
}

TEST_F(DelayedSaveTest, FinishingWritesWhatWaitsAndNothingElse) {
  save->finish();
  EXPECT_EQ(saves, 0);
  save->within(1);
  save->finish();
  EXPECT_EQ(saves, 1);
  save->finish();
  EXPECT_EQ(saves, 1);
}

TEST_F(DelayedSaveTest, ItsEndTakesBackWhatWaits) {
  save->within(1);
  save.reset();
  advance(10);
  EXPECT_EQ(saves, 0);
}

}  // namespace
}  // namespace notewick
