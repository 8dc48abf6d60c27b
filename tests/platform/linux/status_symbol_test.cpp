#include "platform/linux/status_symbol.h"

#include <gtest/gtest.h>

#include <QImage>

namespace notewick {
namespace {

QImage imageOf(std::optional<int> count, int side) {
  return statusSymbol(count).pixmap(side, side).toImage();
}

/// How often a colour near `wanted` occurs.
int pixelsNear(const QImage& image, const QColor& wanted) {
  int found = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor pixel = image.pixelColor(x, y);
      const int distance = std::abs(pixel.red() - wanted.red()) +
                           std::abs(pixel.green() - wanted.green()) +
                           std::abs(pixel.blue() - wanted.blue());
      if (pixel.alpha() > 200 && distance < 60) ++found;
    }
  }
  return found;
}

TEST(StatusSymbol, ReadsTheCountAtTheEndOfATitle) {
  EXPECT_EQ(countIn(" VELK"), std::nullopt);
  EXPECT_EQ(countIn(" VELK (5)"), 5);
  EXPECT_EQ(countIn(" VELK (12)"), 12);
  EXPECT_EQ(countIn(" VELK (5) more"), std::nullopt);
  EXPECT_EQ(countIn(""), std::nullopt);
}

TEST(StatusSymbol, IsDrawnForTheUsualSizesOfPanels) {
  for (const int side : {16, 22, 24, 32, 48}) {
    EXPECT_TRUE(statusSymbol(std::nullopt).availableSizes().contains(QSize(side, side)));
  }
}

TEST(StatusSymbol, IsSeenOnLightAndOnDarkPanels) {
  for (const int side : {16, 22, 32}) {
    const QImage image = imageOf(std::nullopt, side);
    EXPECT_GT(pixelsNear(image, Qt::white), side) << "on dark";
    EXPECT_GT(pixelsNear(image, QColor(0x2e, 0x34, 0x36)), side) << "on light";
    EXPECT_EQ(image.pixelColor(side - 1, 0).alpha(), 0) << "transparent outside";
  }
}

TEST(StatusSymbol, CarriesABadgeOnlyWithACount) {
  const QColor badge(0xc6, 0x28, 0x28);
  EXPECT_EQ(pixelsNear(imageOf(std::nullopt, 22), badge), 0);
  EXPECT_GT(pixelsNear(imageOf(3, 22), badge), 40);
  EXPECT_NE(imageOf(3, 22), imageOf(4, 22));
}

TEST(StatusSymbol, ShowsCountsAboveNineAlike) {
  EXPECT_EQ(imageOf(10, 22), imageOf(250, 22));
}

}  // namespace
}  // namespace notewick
