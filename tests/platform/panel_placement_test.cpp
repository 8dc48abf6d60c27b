#include "platform/panel_placement.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

const Frame SCREEN{0, 30, 1280, 770};
const Frame SECOND_SCREEN{1280, 0, 1920, 1080};

TEST(PanelPlacement, LeavesAFrameOfTheSameSizeWhereItStood) {
  const Frame kept{77, 99, 320, 250};
  EXPECT_EQ(standingWhere(kept, 320, 250, {SCREEN}), kept);
}

TEST(PanelPlacement, KeepsTheBottomRightCornerOfAFrameThatStoodThere) {
  const Frame kept{900, 500, 320, 250};
  EXPECT_EQ(standingWhere(kept, 320, 400, {SCREEN}), (Frame{900, 350, 320, 400}));
  EXPECT_EQ(standingWhere(kept, 300, 250, {SCREEN}), (Frame{920, 500, 300, 250}));
}

TEST(PanelPlacement, KeepsTheTopLeftCornerOfAFrameThatStoodThere) {
  EXPECT_EQ(standingWhere({10, 40, 320, 250}, 320, 400, {SCREEN}), (Frame{10, 40, 320, 400}));
}

TEST(PanelPlacement, PullsAFrameWhollyOntoItsScreen) {
  EXPECT_EQ(standingWhere({1200, 700, 320, 250}, 320, 250, {SCREEN}), (Frame{960, 550, 320, 250}));
  EXPECT_EQ(standingWhere({-100, -5, 320, 250}, 320, 250, {SCREEN}), (Frame{0, 30, 320, 250}));
}

TEST(PanelPlacement, StaysOnTheScreenThatShowsMostOfTheFrame) {
  EXPECT_EQ(standingWhere({1200, 100, 320, 250}, 320, 250, {SCREEN, SECOND_SCREEN}),
            (Frame{1280, 100, 320, 250}));
  EXPECT_EQ(standingWhere({1000, 100, 320, 250}, 320, 250, {SCREEN, SECOND_SCREEN}),
            (Frame{960, 100, 320, 250}));
}

TEST(PanelPlacement, GoesToTheNearestScreenWhenItsOwnIsGone) {
  const Frame third{-1920, 0, 1920, 1080};
  EXPECT_EQ(standingWhere({2500, 600, 320, 250}, 320, 250, {third, SCREEN}),
            (Frame{960, 550, 320, 250}));
}

TEST(PanelPlacement, KeepsTheTitleBarOfAnOversizeFrameOnTheScreen) {
  EXPECT_EQ(standingWhere({100, 500, 320, 250}, 320, 900, {SCREEN}), (Frame{100, 30, 320, 900}));
}

TEST(PanelPlacement, StaysWhereItIsWithoutAScreen) {
  EXPECT_EQ(standingWhere({5, 6, 320, 250}, 320, 400, {}), (Frame{5, 6, 320, 400}));
}

}  // namespace
}  // namespace notewick
