#include "platform/linux/controls/panel_look.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontInfo>
#include <QScreen>

namespace notewick {
namespace {

QPalette paletteOf(const QColor& text, const QColor& window) {
  QPalette palette;
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::Base, window);
  return palette;
}

const std::vector<QPalette>& everydayPalettes() {
  static const std::vector<QPalette> palettes = {
      paletteOf(QColor(0x23, 0x26, 0x29), QColor(0xef, 0xf0, 0xf1)),
      paletteOf(Qt::black, QColor(0xef, 0xef, 0xef)),
      paletteOf(QColor(0xfc, 0xfc, 0xfc), QColor(0x2a, 0x2e, 0x32)),
      paletteOf(QColor(0xee, 0xee, 0xec), QColor(0x35, 0x35, 0x35))};
  return palettes;
}

double contrastOf(const QPalette& palette, Tint tint) {
  return contrast(tinted(palette, tint), palette.color(QPalette::Window));
}

TEST(PanelLook, ContrastGoesFromOneToTwentyOne) {
  EXPECT_DOUBLE_EQ(contrast(Qt::white, Qt::white), 1.0);
  EXPECT_DOUBLE_EQ(contrast(Qt::black, Qt::white), 21.0);
  EXPECT_NEAR(contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
}

TEST(PanelLook, DimmedTextAndRedErrorsStayLegibleOnLightAndDark) {
  for (const QPalette& palette : everydayPalettes()) {
    EXPECT_GE(contrastOf(palette, Tint::secondary), 7.0);
    EXPECT_GE(contrastOf(palette, Tint::tertiary), 4.5);
    EXPECT_LT(contrastOf(palette, Tint::tertiary), contrastOf(palette, Tint::secondary));
    EXPECT_LT(contrastOf(palette, Tint::secondary), contrastOf(palette, Tint::primary));
    const QColor error = tinted(palette, Tint::error);
    EXPECT_GE(contrastOf(palette, Tint::error), 4.5);
    EXPECT_GT(error.red(), 2 * error.green());
    EXPECT_GT(error.red(), error.blue() + 80);
    EXPECT_GE(contrast(exampleColour(palette), palette.color(QPalette::Base)), 4.5);
    EXPECT_GE(contrast(outlineColour(palette), palette.color(QPalette::Window)), 3.0);
  }
}

TEST(PanelLook, DimsNothingInAHighContrastPalette) {
  const QPalette pure = paletteOf(Qt::white, Qt::black);
  for (const Tint tint : {Tint::primary, Tint::secondary, Tint::tertiary}) {
    EXPECT_EQ(tinted(pure, tint), QColor(Qt::white));
  }
  EXPECT_EQ(outlineColour(pure), QColor(Qt::white));
  EXPECT_NE(exampleColour(pure), QColor(Qt::white)) << "an example must not look typed";
}

TEST(PanelLook, TheChosenButtonIsTellableAndLegible) {
  auto palettes = everydayPalettes();
  palettes.push_back(paletteOf(Qt::white, Qt::black));
  palettes.push_back(paletteOf(Qt::black, Qt::white));
  for (QPalette palette : palettes) {
    for (const QColor highlight : {QColor(0, 49, 110), QColor(61, 174, 233), QColor(255, 255, 0)}) {
      palette.setColor(QPalette::Highlight, highlight);
      palette.setColor(QPalette::HighlightedText, Qt::white);
      const auto [face, text] = chosenColours(palette);
      EXPECT_GE(contrast(face, palette.color(QPalette::Button)), 3.0)
          << highlight.name().toStdString();
      EXPECT_GE(contrast(face, text), 4.5) << highlight.name().toStdString();
    }
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, palette.color(QPalette::Button));
    EXPECT_GE(contrast(disabledTextColour(palette), palette.color(QPalette::Button)), 3.0);
  }
}

TEST(PanelLook, SizesGrowWithTheFontOfTheDesktopAsFarAsTheScreenAllowsButNeverShrink) {
  const QFont before = QApplication::font();
  QFont font = before;
  font.setPixelSize(9);
  QApplication::setFont(font);
  EXPECT_EQ(points(296), 296);
  EXPECT_EQ(panelFont(10).pixelSize(), 10);
  font.setPixelSize(19);
  QApplication::setFont(font);
  EXPECT_EQ(points(260), 19 * 20);
  EXPECT_EQ(panelFont(13).pixelSize(), 19);
  font.setPixelSize(130);
  QApplication::setFont(font);
  EXPECT_LT(points(400), QGuiApplication::primaryScreen()->availableGeometry().height());
  EXPECT_GT(points(400), 400);
  QApplication::setFont(before);
}

TEST(PanelLook, ButtonsShowAnAmpersand) {
  EXPECT_EQ(buttonText("A & B"), QStringLiteral("A && B"));
}

}  // namespace
}  // namespace notewick
