#include "platform/linux/panel_placement.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

const QRect SCREEN(0, 30, 1280, 770);
const QRect SECOND_SCREEN(1280, 0, 1920, 1080);
const QSize SMALL(320, 250);
const QSize TALL(320, 400);

TEST(PanelPlacement, PutsAFrameIntoTheBottomRightCorner) {
  EXPECT_EQ(bottomRightCorner(SCREEN, SMALL, 24), QPoint(1280 - 24 - 320, 800 - 24 - 250));
}

TEST(PanelPlacement, PutsAFrameIntoTheMiddle) {
  EXPECT_EQ(centred(SCREEN, {380, 260}), QPoint(450, 30 + 255));
}

TEST(PanelPlacement, LeavesAFrameOfTheSameSizeWhereItStood) {
  EXPECT_EQ(standingWhere({{77, 99}, SMALL}, SMALL, {SCREEN}), QPoint(77, 99));
}

TEST(PanelPlacement, KeepsTheBottomRightCornerOfAFrameThatStoodThere) {
  const QRect kept(QPoint(900, 500), SMALL);
  EXPECT_EQ(standingWhere(kept, TALL, {SCREEN}), QPoint(900, 500 + 250 - 400));
  EXPECT_EQ(standingWhere(kept, {300, 250}, {SCREEN}), QPoint(920, 500));
}

TEST(PanelPlacement, KeepsTheTopLeftCornerOfAFrameThatStoodThere) {
  EXPECT_EQ(standingWhere({{10, 40}, SMALL}, TALL, {SCREEN}), QPoint(10, 40));
}

TEST(PanelPlacement, PullsAFrameWhollyOntoItsScreen) {
  EXPECT_EQ(standingWhere({{1200, 700}, SMALL}, SMALL, {SCREEN}), QPoint(960, 550));
  EXPECT_EQ(standingWhere({{-100, -5}, SMALL}, SMALL, {SCREEN}), QPoint(0, 30));
}

TEST(PanelPlacement, StaysOnTheScreenThatShowsMostOfTheFrame) {
  const QRect mostlySecond(QPoint(1200, 100), SMALL);
  EXPECT_EQ(standingWhere(mostlySecond, SMALL, {SCREEN, SECOND_SCREEN}), QPoint(1280, 100));
}

TEST(PanelPlacement, GoesToTheNearestScreenWhenItsOwnIsGone) {
  const QRect onTheSecond(QPoint(2500, 600), SMALL);
  EXPECT_EQ(standingWhere(onTheSecond, SMALL, {SCREEN}), QPoint(960, 550));
}

TEST(PanelPlacement, KeepsTheTitleBarOfAnOversizeFrameOnTheScreen) {
  EXPECT_EQ(standingWhere({{100, 500}, SMALL}, {320, 900}, {SCREEN}), QPoint(100, 30));
}

TEST(PanelPlacement, StaysWhereItIsWithoutAScreen) {
  EXPECT_EQ(standingWhere({{5, 6}, SMALL}, TALL, {}), QPoint(5, 6));
}

}  // namespace
}  // namespace notewick
