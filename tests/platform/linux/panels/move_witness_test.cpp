#include "platform/linux/panels/move_witness.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

constexpr QPoint WANTED(800, 450);
constexpr QPoint CORNER(900, 500);
constexpr QPoint ABOVE(900, 400);  ///< where the window stands in its corner when it is taller
constexpr QPoint HERE(200, 100);
constexpr QPoint THERE(300, 150);

/// A window on the screen, at the place that its window manager has given it.
class MoveWitnessTest : public testing::Test {
 protected:
  MoveWitnessTest() {
    witness_.mapped(WANTED);
    EXPECT_EQ(witness_.reported(HERE), Mover::windowManager);
    witness_.drawn();
  }

  MoveWitness witness_{Placing::once};
};

TEST_F(MoveWitnessTest, AMoveRightAfterTheWindowAppearedIsTheUsers) {
  EXPECT_EQ(witness_.reported(THERE), Mover::user);
}

TEST_F(MoveWitnessTest, NothingBeforeTheWindowIsDrawnIsTheUsers) {
  witness_.mapped(WANTED);
  EXPECT_EQ(witness_.reported(HERE), Mover::windowManager);
  EXPECT_EQ(witness_.reported(THERE), Mover::windowManager);
}

TEST_F(MoveWitnessTest, AWindowThatIsMappedAgainComesBackWithoutAReport) {
  witness_.asked(CORNER);
  witness_.mapped(WANTED);
  witness_.drawn();
  EXPECT_EQ(witness_.reported(THERE), Mover::user);
}

TEST_F(MoveWitnessTest, TheFrameMayBePutOnAfterTheWindowIsDrawn) {
  EXPECT_EQ(witness_.reported(WANTED), Mover::program);
  EXPECT_EQ(witness_.reported(THERE), Mover::user);
}

TEST_F(MoveWitnessTest, APlaceThatWasAskedForIsTheProgramsDoing) {
  witness_.asked(CORNER);
  EXPECT_EQ(witness_.reported(CORNER), Mover::program);
  EXPECT_EQ(witness_.reported(THERE), Mover::user);
}

TEST_F(MoveWitnessTest, AnotherPlaceThanTheOneAskedForIsAnAnswerToo) {
  witness_.asked(CORNER);
  EXPECT_EQ(witness_.reported(HERE), Mover::program);
  EXPECT_EQ(witness_.reported(THERE), Mover::user);
}

TEST_F(MoveWitnessTest, ASlowWindowManagerAnswersEveryRequestThatWaited) {
  const std::vector<QPoint> places{ABOVE, CORNER, ABOVE, CORNER};
  for (const QPoint place : places) witness_.asked(place);
  for (const QPoint place : places) EXPECT_EQ(witness_.reported(place), Mover::program);
  EXPECT_EQ(witness_.reported(THERE), Mover::user);
}

TEST_F(MoveWitnessTest, SeveralPlacesThatItPrefersAreItsAnswers) {
  witness_.asked(ABOVE);
  witness_.asked(CORNER);
  EXPECT_EQ(witness_.reported(HERE), Mover::program);
  EXPECT_EQ(witness_.reported(THERE), Mover::program);
  EXPECT_EQ(witness_.reported(HERE), Mover::user);
}

TEST_F(MoveWitnessTest, TheLastPlaceAskedForMayBeTheOnlyAnswer) {
  witness_.asked(ABOVE);
  witness_.asked(CORNER);
  EXPECT_EQ(witness_.reported(CORNER), Mover::program);
  EXPECT_EQ(witness_.reported(THERE), Mover::user);
}

TEST_F(MoveWitnessTest, TheUserMayPutTheWindowWhereTheProgramOnceWantedIt) {
  witness_.asked(CORNER);
  EXPECT_EQ(witness_.reported(CORNER), Mover::program);
  EXPECT_EQ(witness_.reported(THERE), Mover::user);
  EXPECT_EQ(witness_.reported(CORNER), Mover::user);
}

TEST_F(MoveWitnessTest, AWindowThatTheUserHoldsIsMovedByTheUser) {
  witness_.asked(CORNER);
  witness_.grabbed();
  EXPECT_EQ(witness_.reported(THERE), Mover::user);
}

TEST(AWindowThatIsDrawnFirst, IsPlacedByTheWindowManagerAllTheSame) {
  MoveWitness witness(Placing::once);
  witness.mapped(WANTED);
  witness.drawn();
  EXPECT_EQ(witness.reported(HERE), Mover::windowManager);
  EXPECT_EQ(witness.reported(THERE), Mover::user);
}

TEST(AWindowThatIsDrawnFirst, MayBeGrabbedBeforeItsPlaceIsReported) {
  MoveWitness witness(Placing::once);
  witness.mapped(WANTED);
  witness.drawn();
  witness.grabbed();
  EXPECT_EQ(witness.reported(THERE), Mover::user);
}

TEST(AWindowOfXWayland, IsPlacedEachTimeItIsMapped) {
  MoveWitness witness(Placing::always);
  for (int mapping = 0; mapping < 2; ++mapping) {
    witness.mapped(WANTED);
    witness.drawn();
    EXPECT_EQ(witness.reported(HERE), Mover::windowManager);
    EXPECT_EQ(witness.reported(THERE), Mover::user);
  }
}

}  // namespace
}  // namespace notewick
