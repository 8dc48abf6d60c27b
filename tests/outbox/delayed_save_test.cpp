#include "outbox/delayed_save.h"

#include <optional>

#include "tests/support/world.h"

namespace notewick {
namespace {

class DelayedSaveTest : public WorldTest {
 protected:
  DelayedSaveTest() { loop.fireLate(0); }

  void expectNoMoreSaves() {
    const int before = saves;
    advance(10);
    EXPECT_EQ(saves, before);
  }

  int saves = 0;
  std::optional<DelayedSave> save{std::in_place, [this] { ++saves; }};
};

TEST_F(DelayedSaveTest, ChangesAreSavedTogetherNoLaterThanTheFirstNeeds) {
  for (int round = 1; round <= 2; ++round) {
    save->within(1);
    advance(0.999);
    save->within(1);
    EXPECT_EQ(saves, round - 1);
    advance(0.001);
    EXPECT_EQ(saves, round);
  }
  expectNoMoreSaves();
}

TEST_F(DelayedSaveTest, TheMoreUrgentOneTakesTheOtherAlongInEitherOrder) {
  save->within(1);
  save->within(0.02);
  advance(0.02);
  EXPECT_EQ(saves, 1);
  save->within(0.02);
  save->within(1);
  advance(0.02);
  EXPECT_EQ(saves, 2);
  expectNoMoreSaves();
}

TEST_F(DelayedSaveTest, ASaveAtOnceTakesAlongWhatWaits) {
  save->within(1);
  save->now();
  EXPECT_EQ(saves, 1);
  expectNoMoreSaves();
}

TEST_F(DelayedSaveTest, FinishingWritesWhatWaitsAndNothingElse) {
  save->finish();
  EXPECT_EQ(saves, 0);
  save->within(1);
  save->finish();
  save->finish();
  EXPECT_EQ(saves, 1);
}

TEST_F(DelayedSaveTest, ItsEndTakesBackWhatWaits) {
  save->within(1);
  save.reset();
  expectNoMoreSaves();
}

}  // namespace
}  // namespace notewick
