#include "platform/linux/tray/status_symbol.h"

#include <gtest/gtest.h>

#include <QImage>
#include <limits>

namespace notewick {
namespace {

QImage imageOf(std::size_t count, int side) {
  return statusSymbol(badgeOf(count)).pixmap(side, side).toImage();
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

TEST(StatusSymbol, ShowsOneDigitOfACount) {
  EXPECT_EQ(badgeOf(0), QString());
  EXPECT_EQ(badgeOf(1), QStringLiteral("1"));
  EXPECT_EQ(badgeOf(9), QStringLiteral("9"));
  EXPECT_EQ(badgeOf(10), QStringLiteral("9+"));
  EXPECT_EQ(badgeOf(std::numeric_limits<std::size_t>::max()), QStringLiteral("9+"));
}

TEST(StatusSymbol, IsSeenOnLightAndOnDarkPanels) {
  for (const int side : {16, 22, 24, 32, 48}) {
    EXPECT_TRUE(statusSymbol().availableSizes().contains(QSize(side, side)));
    const QImage image = imageOf(0, side);
    EXPECT_GT(pixelsNear(image, Qt::white), side) << "on dark";
    EXPECT_GT(pixelsNear(image, QColor(0x2e, 0x34, 0x36)), side) << "on light";
    EXPECT_EQ(image.pixelColor(side - 1, 0).alpha(), 0) << "transparent outside";
  }
}

TEST(StatusSymbol, CarriesABadgeOnlyWithACount) {
  const QColor badge(0xc6, 0x28, 0x28);
  EXPECT_EQ(pixelsNear(imageOf(0, 22), badge), 0);
  EXPECT_GT(pixelsNear(imageOf(3, 22), badge), 40);
  EXPECT_NE(imageOf(3, 22), imageOf(4, 22));
  EXPECT_NE(imageOf(9, 22), imageOf(10, 22));
}

TEST(StatusSymbol, IsDrawnOnceForEachBadge) {
  StatusSymbols symbols;
  const auto first = symbols.with("1").cacheKey();
  EXPECT_NE(symbols.with("2").cacheKey(), first);
  EXPECT_EQ(symbols.with("1").cacheKey(), first);
}

}  // namespace
}  // namespace notewick
