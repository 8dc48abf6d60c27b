#include "platform/linux/tray/status_symbol.h"

#include <QPainter>
#include <QPixmap>
#include <array>
#include <cmath>

namespace notewick {
namespace {

constexpr std::array SIZES = {16, 22, 24, 32, 44, 48, 64};
constexpr std::size_t MOST_SHOWN = 9;
const QColor PAPER(0xfa, 0xfa, 0xfa);
const QColor INK(0x2e, 0x34, 0x36);
const QColor COUNT_FILL(0xc6, 0x28, 0x28);

/// The symbol in one size; lengths are shares of the side, put onto whole pixels.
class Drawing {
 public:
  explicit Drawing(int side) : side_(side), stroke_(std::max(1, side / 18)), pixmap_(side, side) {
    pixmap_.fill(Qt::transparent);
  }

  QPixmap with(const QString& badge) {
    QPainter painter(&pixmap_);
    painter.setRenderHint(QPainter::Antialiasing);
    drawNote(painter);
    const QRect box = badgeBox(badge);
    clearAround(painter, box);
    if (badge.isEmpty()) {
      drawPlus(painter, box);
    } else {
      drawCount(painter, box, badge);
    }
    return pixmap_;
  }

 private:
  [[nodiscard]] int part(double share) const {
    return static_cast<int>(std::lround(side_ * share));
  }

  [[nodiscard]] QRect badgeBox(const QString& badge) const {
    const int height = part(badge.isEmpty() ? 0.52 : 0.60);
    const int width = badge.size() > 1 ? part(0.78) : height;
    return {side_ - width, side_ - height, width, height};
  }

  void drawNote(QPainter& painter) const {
    const double half = stroke_ / 2.0;
    const QRect paper(part(0.07), part(0.05), part(0.72), part(0.88));
    painter.setPen(QPen(INK, stroke_));
    painter.setBrush(PAPER);
    painter.drawRoundedRect(QRectF(paper).adjusted(half, half, -half, -half), side_ * 0.1,
                            side_ * 0.1);
    const int left = paper.left() + 2 * stroke_ + part(0.05);
    const int length = paper.right() + 1 - left - (left - paper.left());
    for (const double y : {0.26, 0.43, 0.60}) {
      painter.fillRect(left, part(y), y < 0.5 ? length : length / 2, stroke_, INK);
    }
  }

  void clearAround(QPainter& painter, const QRect& box) const {
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    fillPill(painter, box.adjusted(-stroke_, -stroke_, stroke_, stroke_), Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  }

  void drawPlus(QPainter& painter, const QRect& box) const {
    fillPill(painter, box, INK);
    fillPill(painter, box.adjusted(stroke_, stroke_, -stroke_, -stroke_), PAPER);
    const int arm = box.width() / 2 - 2 * stroke_;
    const int middle = box.width() / 2 - stroke_ / 2;
    const int span = 2 * arm + (box.width() - stroke_) % 2;
    const int start = (box.width() - span) / 2;
    painter.fillRect(box.left() + start, box.top() + middle, span, stroke_, INK);
    painter.fillRect(box.left() + middle, box.top() + start, stroke_, span, INK);
  }

  static void drawCount(QPainter& painter, const QRect& box, const QString& badge) {
    fillPill(painter, box, COUNT_FILL);
    QFont font;
    font.setPixelSize(box.height() * 4 / 5);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(box, Qt::AlignCenter, badge);
  }

  static void fillPill(QPainter& painter, const QRect& box, const QColor& colour) {
    const double radius = box.height() / 2.0;
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawRoundedRect(box, radius, radius);
  }

  int side_;
  int stroke_;
  QPixmap pixmap_;
};

}  // namespace

QString badgeOf(std::size_t count) {
  if (count == 0) return {};
  return count > MOST_SHOWN ? QString::number(MOST_SHOWN) + QLatin1Char('+')
                            : QString::number(count);
}

QIcon statusSymbol(const QString& badge) {
  QIcon icon;
  for (const int side : SIZES) icon.addPixmap(Drawing(side).with(badge));
  return icon;
}

const QIcon& StatusSymbols::with(const QString& badge) {
  const auto [entry, isNew] = drawn_.try_emplace(badge);
  if (isNew) entry->second = statusSymbol(badge);
  return entry->second;
}

}  // namespace notewick
