#include "platform/linux/controls/panel_look.h"

#include <QApplication>
#include <QFontInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace notewick {
namespace {

constexpr double SYSTEM_FONT_SIZE = 13.0;
constexpr double PURE_CONTRAST = 20.0;
constexpr double SECONDARY_CONTRAST = 7.0;
constexpr double TEXT_CONTRAST = 4.5;
constexpr double OUTLINE_CONTRAST = 3.0;
constexpr int STEPS = 20;                // from one colour to another
constexpr double TALLEST_PANEL = 384.0;  // the quick-note panel with all its rows, in points
constexpr int AROUND_PANEL = 64;         // its title bar and its distance to the edge, in pixels
const QColor RED(0xff, 0x3b, 0x30);

double largestScale() {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  const int height = screen != nullptr ? screen->availableGeometry().height() : 0;
  return (height - AROUND_PANEL) / TALLEST_PANEL;
}

double pointScale() {
  const double wanted = QFontInfo(QApplication::font()).pixelSize() / SYSTEM_FONT_SIZE;
  return std::max(1.0, std::min(wanted, largestScale()));
}

double linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

QColor mixed(const QColor& one, const QColor& other, double share) {
  const auto channel = [share](double from, double to) {
    return static_cast<float>(from + (to - from) * share);
  };
  return QColor::fromRgbF(channel(one.redF(), other.redF()), channel(one.greenF(), other.greenF()),
                          channel(one.blueF(), other.blueF()));
}

/// Goes from `from` towards `to` no further than needed for `wanted` on `background`.
QColor withContrast(const QColor& from, const QColor& to, const QColor& background, double wanted) {
  for (int step = 0; step < STEPS; ++step) {
    const QColor candidate = mixed(from, to, static_cast<double>(step) / STEPS);
    if (contrast(candidate, background) >= wanted) return candidate;
  }
  return to;
}

QColor dimmed(const QColor& foreground, const QColor& background, double share, double wanted) {
  if (contrast(foreground, background) >= PURE_CONTRAST) return foreground;
  return withContrast(mixed(foreground, background, share), foreground, background, wanted);
}

}  // namespace

int points(double length) {
  return static_cast<int>(std::lround(length * pointScale()));
}

QFont panelFont(double size, QFont::Weight weight) {
  QFont font = QApplication::font();
  font.setPixelSize(points(size));
  font.setWeight(weight);
  return font;
}

QHBoxLayout* rowIn(QWidget& widget, double spacing) {
  auto* const row = new QHBoxLayout(&widget);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(points(spacing));
  return row;
}

QVBoxLayout* columnIn(QWidget& widget, double spacing, double inset) {
  auto* const column = new QVBoxLayout(&widget);
  const int margin = points(inset);
  column->setContentsMargins(margin, margin, margin, margin);
  column->setSpacing(points(spacing));
  return column;
}

double contrast(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

QColor tinted(const QPalette& palette, Tint tint) {
  const QColor foreground = palette.color(QPalette::Active, QPalette::WindowText);
  const QColor background = palette.color(QPalette::Active, QPalette::Window);
  switch (tint) {
    case Tint::primary:
      return foreground;
    case Tint::secondary:
      return dimmed(foreground, background, 0.3, SECONDARY_CONTRAST);
    case Tint::tertiary:
      return dimmed(foreground, background, 0.5, TEXT_CONTRAST);
    case Tint::error:
      return withContrast(RED, foreground, background, TEXT_CONTRAST);
  }
  return foreground;
}

QColor exampleColour(const QPalette& palette) {
  const QColor typed = palette.color(QPalette::Active, QPalette::Text);
  const QColor field = palette.color(QPalette::Active, QPalette::Base);
  return withContrast(mixed(typed, field, 0.5), typed, field, TEXT_CONTRAST);
}

QColor outlineColour(const QPalette& palette) {
  return dimmed(palette.color(QPalette::Active, QPalette::WindowText),
                palette.color(QPalette::Active, QPalette::Window), 0.6, OUTLINE_CONTRAST);
}

QColor focusColour(const QPalette& palette, const QColor& ground) {
  return withContrast(palette.color(QPalette::Active, QPalette::Highlight),
                      palette.color(QPalette::Active, QPalette::WindowText), ground,
                      OUTLINE_CONTRAST);
}

QColor disabledTextColour(const QPalette& palette) {
  return withContrast(palette.color(QPalette::Disabled, QPalette::ButtonText),
                      palette.color(QPalette::Active, QPalette::ButtonText),
                      palette.color(QPalette::Active, QPalette::Button), OUTLINE_CONTRAST);
}

ChosenColours chosenColours(const QPalette& palette) {
  const QColor highlight = palette.color(QPalette::Active, QPalette::Highlight);
  const QColor text = palette.color(QPalette::Active, QPalette::HighlightedText);
  const QColor others = palette.color(QPalette::Active, QPalette::Button);
  const QColor onOthers = palette.color(QPalette::Active, QPalette::ButtonText);
  for (int step = 0; step < STEPS; ++step) {
    const QColor face = mixed(highlight, onOthers, static_cast<double>(step) / STEPS);
    const bool isLegible = contrast(face, text) >= TEXT_CONTRAST;
    if (isLegible && contrast(face, others) >= OUTLINE_CONTRAST) return {face, text};
  }
  const QColor face = withContrast(highlight, onOthers, others, OUTLINE_CONTRAST);
  return {face, contrast(face, Qt::black) > contrast(face, Qt::white) ? Qt::black : Qt::white};
}

QString fromUtf8(const std::string& utf8) {
  return QString::fromStdString(utf8);
}

QString buttonText(const std::string& utf8) {
  return fromUtf8(utf8).replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace notewick
