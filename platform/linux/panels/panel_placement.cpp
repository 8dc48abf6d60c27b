#include "platform/linux/panels/panel_placement.h"

#include <QGuiApplication>
#include <QScreen>

#include "platform/panel_placement.h"

namespace notewick {
namespace {

Frame frameOf(const QRect& rect) {
  return {static_cast<double>(rect.x()), static_cast<double>(rect.y()),
          static_cast<double>(rect.width()), static_cast<double>(rect.height())};
}

}  // namespace

QList<QRect> availableScreens() {
  QList<QRect> available;
  for (const QScreen* screen : QGuiApplication::screens()) available << screen->availableGeometry();
  return available;
}

QPoint bottomRightCorner(const QRect& available, QSize frame, int inset) {
  return {available.right() + 1 - frame.width() - inset,
          available.bottom() + 1 - frame.height() - inset};
}

QPoint centred(const QRect& available, QSize frame) {
  return {available.left() + (available.width() - frame.width()) / 2,
          available.top() + (available.height() - frame.height()) / 2};
}

QPoint standingWhere(const QRect& kept, QSize frame, const QList<QRect>& screens) {
  std::vector<Frame> frames;
  for (const QRect& screen : screens) frames.push_back(frameOf(screen));
  const Frame standing = standingWhere(frameOf(kept), frame.width(), frame.height(), frames);
  return QPointF(standing.x, standing.y).toPoint();
}

}  // namespace notewick
