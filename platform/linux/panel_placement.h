#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

namespace notewick {

// Where a panel goes. Pure arithmetic on frames: the window with its title bar and borders, in
// device-independent pixels. `available` is a screen without the desktop's own bars.

/// The top left corner of a frame in the bottom right corner of `available`, `inset` from both
/// edges.
[[nodiscard]] QPoint bottomRightCorner(const QRect& available, QSize frame, int inset);

/// The top left corner of a frame in the middle of `available`.
[[nodiscard]] QPoint centred(const QRect& available, QSize frame);

/// The top left corner of a frame of size `frame` that stands where `kept` stood. It keeps the
/// edges of `kept` that are nearest to an edge of the screen, so that a panel at the bottom grows
/// upwards, and is pulled wholly onto the screen that shows most of `kept`, or is nearest to it.
/// A frame larger than the screen keeps its title bar on it. `kept`'s own corner without screens.
[[nodiscard]] QPoint standingWhere(const QRect& kept, QSize frame, const QList<QRect>& screens);

}  // namespace notewick
