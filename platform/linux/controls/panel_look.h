#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <string>

class QHBoxLayout;
class QVBoxLayout;
class QWidget;

namespace notewick {

// Sizes, fonts and colours of the panels. The panels are laid out in points for a system font of 13
// points. Here a point is a device-independent pixel, and more for a desktop whose own font is
// larger than 13 pixels; it is never less, so that the smallest text stays legible, and never so
// much that the tallest panel would not fit on the screen.

/// A length given in points, in whole device-independent pixels.
[[nodiscard]] int points(double length);

[[nodiscard]] QFont panelFont(double size, QFont::Weight weight = QFont::Normal);

/// Lays out the widget as a row without margins. `spacing` is in points.
[[nodiscard]] QHBoxLayout* rowIn(QWidget& widget, double spacing);

/// Lays out the widget as a column with a margin of `inset` around it; both are in points.
[[nodiscard]] QVBoxLayout* columnIn(QWidget& widget, double spacing, double inset);

/// The contrast of two opaque colours, from 1 to 21, as WCAG 2.1 defines it.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

/// What a label is for; decides its colour.
enum class Tint { primary, secondary, tertiary, error };

/// The colour of a label on a window of this palette. Secondary text keeps a contrast of 7,
/// tertiary and error text one of 4.5. A palette of pure black and white is a high-contrast one:
/// there secondary and tertiary text is not dimmed.
[[nodiscard]] QColor tinted(const QPalette& palette, Tint tint);

/// The colour of example text in a field: dimmed text with a contrast of 4.5.
[[nodiscard]] QColor exampleColour(const QPalette& palette);

/// The colour of an outline that shows where a control is: a contrast of 3 to the window.
[[nodiscard]] QColor outlineColour(const QPalette& palette);

/// The colour of what shows that a control on `ground` has the keyboard: the palette's highlight,
/// brought to a contrast of 3.
[[nodiscard]] QColor focusColour(const QPalette& palette, const QColor& ground);

/// The colour of a button's title that cannot be pressed now: the palette's, brought to a contrast
/// of 3.
[[nodiscard]] QColor disabledTextColour(const QPalette& palette);

struct ChosenColours {
  QColor face;
  QColor text;
};

/// The colours of the chosen one among several buttons: the palette's highlight, brought to a
/// contrast of 3 to the others, and a text on it with one of 4.5.
[[nodiscard]] ChosenColours chosenColours(const QPalette& palette);

/// The QString of UTF-8; what is not valid becomes U+FFFD.
[[nodiscard]] QString fromUtf8(const std::string& utf8);

/// The text of a button that shows `utf8` to the letter.
[[nodiscard]] QString buttonText(const std::string& utf8);

}  // namespace notewick
