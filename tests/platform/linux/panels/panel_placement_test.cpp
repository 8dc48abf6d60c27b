#include "platform/linux/panels/panel_placement.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

const QRect SCREEN(0, 30, 1280, 770);
const QRect SECOND_SCREEN(1280, 0, 1920, 1080);
const QSize SMALL(320, 250);
const QSize TALL(320, 400);

TEST(QtPanelPlacement, PutsAFrameIntoTheBottomRightCorner) {
  EXPECT_EQ(bottomRightCorner(SCREEN, SMALL, 24), QPoint(1280 - 24 - 320, 800 - 24 - 250));
}

TEST(QtPanelPlacement, PutsAFrameIntoTheMiddle) {
  EXPECT_EQ(centred(SCREEN, {380, 260}), QPoint(450, 30 + 255));
}

TEST(QtPanelPlacement, LetsAFrameGrowFromWhereItStood) {
  const QRect kept(QPoint(900, 500), SMALL);
  EXPECT_EQ(standingWhere(kept, TALL, {SCREEN, SECOND_SCREEN}), QPoint(900, 500 + 250 - 400));
}

TEST(QtPanelPlacement, ReachesTheVeryEdgesOfAScreen) {
  EXPECT_EQ(standingWhere({{1200, 700}, SMALL}, SMALL, {SCREEN}), QPoint(960, 550));
}

}  // namespace
}  // namespace notewick
