#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

namespace notewick {

// Where a panel goes, in Qt's terms: frames are the window with its title bar and borders,
// in device-independent pixels. `available` is a screen without the desktop's own bars.

/// The available parts of all screens.
[[nodiscard]] QList<QRect> availableScreens();

/// The top left corner of a frame in the bottom right corner of `available`, `inset` from both
/// edges.
[[nodiscard]] QPoint bottomRightCorner(const QRect& available, QSize frame, int inset);

/// The top left corner of a frame in the middle of `available`.
[[nodiscard]] QPoint centred(const QRect& available, QSize frame);

/// The top left corner of a frame of size `frame` that stood at `kept`
/// (platform/panel_placement.h).
[[nodiscard]] QPoint standingWhere(const QRect& kept, QSize frame, const QList<QRect>& screens);

}  // namespace notewick
