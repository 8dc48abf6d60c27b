#include "platform/linux/panels/move_witness.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace notewick {
namespace {

using testing::ElementsAre;
using enum Mover;

constexpr QPoint WANTED(800, 450);
constexpr QPoint CORNER(900, 500);
constexpr QPoint ABOVE(900, 400);  ///< where the window stands in its corner when it is taller
constexpr QPoint HERE(200, 100);
constexpr QPoint THERE(300, 150);

class MoveWitnessTest : public testing::Test {
 protected:
  MoveWitnessTest() { appear(witness_); }

  /// On the screen, at the place that its window manager has given it.
  static void appear(MoveWitness& witness) {
    witness.mapped(WANTED);
    EXPECT_EQ(witness.reported(HERE), Mover::windowManager);
    witness.drawn();
  }

  /// Who moved a window to the places reported, after the program has asked for those before.
  static std::vector<Mover> movers(const std::vector<QPoint>& asked,
                                   const std::vector<QPoint>& reported) {
    MoveWitness witness(Placing::once);
    appear(witness);
    for (const QPoint place : asked) witness.asked(place);
    std::vector<Mover> found;
    for (const QPoint place : reported) found.push_back(witness.reported(place));
    return found;
  }

  MoveWitness witness_{Placing::once};
};

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

TEST_F(MoveWitnessTest, AMoveThatNobodyAskedForIsTheUsers) {
  EXPECT_THAT(movers({}, {THERE}), ElementsAre(user)) << "right after the window appeared, too";
  EXPECT_THAT(movers({CORNER}, {CORNER, THERE, CORNER}), ElementsAre(program, user, user))
      << "to where the program once wanted it";
}

TEST_F(MoveWitnessTest, TheFrameMayBePutOnAfterTheWindowIsDrawn) {
  EXPECT_THAT(movers({}, {WANTED, THERE}), ElementsAre(program, user));
}

TEST_F(MoveWitnessTest, ANewFrameIsTheWindowManagersDoingAlsoAfterTheWindowIsDrawn) {
  witness_.framed();
  EXPECT_EQ(witness_.reported(THERE), Mover::windowManager);
  EXPECT_EQ(witness_.reported(THERE), Mover::windowManager) << "the same place in a larger frame";
  EXPECT_EQ(witness_.reported(HERE), Mover::user);
}

TEST_F(MoveWitnessTest, TheFirstReportAlsoTellsOfTheFirstFrame) {
  MoveWitness witness(Placing::once);
  witness.mapped(WANTED);
  witness.framed();
  EXPECT_EQ(witness.reported(HERE), Mover::windowManager);
  witness.drawn();
  EXPECT_EQ(witness.reported(THERE), Mover::user);
}

TEST_F(MoveWitnessTest, AWindowThatStandsInItsNewFrameWithoutAReportIsMovedByTheUser) {
  witness_.mapped(HERE);
  witness_.framed();
  witness_.drawn();
  witness_.stands();
  EXPECT_EQ(witness_.reported(THERE), Mover::user);
}

TEST_F(MoveWitnessTest, AnAnswerOfTheWindowManagerIsTheProgramsDoing) {
  EXPECT_THAT(movers({CORNER}, {HERE, THERE}), ElementsAre(program, user))
      << "another place than the one asked for";
  EXPECT_THAT(movers({ABOVE, CORNER}, {HERE, THERE, HERE}), ElementsAre(program, program, user))
      << "several places that it prefers";
  EXPECT_THAT(movers({ABOVE, CORNER}, {CORNER, THERE}), ElementsAre(program, user))
      << "the last place asked for alone";
  EXPECT_THAT(movers({ABOVE, CORNER, ABOVE, CORNER}, {ABOVE, CORNER, ABOVE, CORNER, THERE}),
              ElementsAre(program, program, program, program, user))
      << "slow, to every request that waited";
}

TEST_F(MoveWitnessTest, AWindowThatTheUserHoldsIsMovedByTheUser) {
  witness_.asked(CORNER);
  witness_.grabbed();
  EXPECT_EQ(witness_.reported(THERE), Mover::user);
}

TEST(AWindowThatIsDrawnFirst, IsPlacedByTheWindowManagerUnlessItIsGrabbedBefore) {
  for (const bool isGrabbed : {false, true}) {
    MoveWitness witness(Placing::once);
    witness.mapped(WANTED);
    witness.drawn();
    if (isGrabbed) witness.grabbed();
    EXPECT_EQ(witness.reported(HERE), isGrabbed ? user : Mover::windowManager);
    EXPECT_EQ(witness.reported(THERE), user);
  }
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
