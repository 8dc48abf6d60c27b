#include "platform/linux/panel_placement.h"

#include <algorithm>
#include <tuple>

namespace notewick {
namespace {

int area(const QRect& rect) {
  return rect.isEmpty() ? 0 : rect.width() * rect.height();
}

int distance(const QRect& screen, const QRect& frame) {
  return (screen.center() - frame.center()).manhattanLength();
}

const QRect& screenOf(const QRect& frame, const QList<QRect>& screens) {
  const auto closeness = [&frame](const QRect& screen) {
    return std::tuple(area(screen.intersected(frame)), -distance(screen, frame));
  };
  return *std::max_element(screens.begin(), screens.end(),
                           [&closeness](const auto& one, const auto& other) {
                             return closeness(one) < closeness(other);
                           });
}

QPoint pulledOnto(const QRect& screen, const QRect& frame) {
  return {std::max(screen.left(), std::min(frame.left(), screen.right() + 1 - frame.width())),
          std::max(screen.top(), std::min(frame.top(), screen.bottom() + 1 - frame.height()))};
}

}  // namespace

QPoint bottomRightCorner(const QRect& available, QSize frame, int inset) {
  return {available.right() + 1 - frame.width() - inset,
          available.bottom() + 1 - frame.height() - inset};
}

QPoint centred(const QRect& available, QSize frame) {
  return {available.left() + (available.width() - frame.width()) / 2,
          available.top() + (available.height() - frame.height()) / 2};
}

QPoint standingWhere(const QRect& kept, QSize frame, const QList<QRect>& screens) {
  if (screens.isEmpty()) return kept.topLeft();
  const QRect& screen = screenOf(kept, screens);
  QRect standing(kept.topLeft(), frame);
  if (kept.center().x() > screen.center().x()) standing.moveRight(kept.right());
  if (kept.center().y() > screen.center().y()) standing.moveBottom(kept.bottom());
  return pulledOnto(screen, standing);
}

}  // namespace notewick
