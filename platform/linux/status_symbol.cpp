#include "platform/linux/status_symbol.h"

#include <QPainter>
#include <QPixmap>
#include <QRegularExpression>
#include <array>
#include <cmath>

namespace notewick {
namespace {

constexpr std::array SIZES = {16, 22, 24, 32, 44, 48, 64};
constexpr int MOST_SHOWN = 9;
const QColor PAPER(0xfa, 0xfa, 0xfa);
const QColor INK(0x2e, 0x34, 0x36);
const QColor COUNT_FILL(0xc6, 0x28, 0x28);

/// The symbol in one size; lengths are shares of the side, put onto whole pixels.
class Drawing {
 public:
  explicit Drawing(int side) : side_(side), stroke_(std::max(1, side / 18)), pixmap_(side, side) {
    pixmap_.fill(Qt::transparent);
  }

  QPixmap of(std::optional<int> count) {
    QPainter painter(&pixmap_);
    painter.setRenderHint(QPainter::Antialiasing);
    drawNote(painter);
    const QRect badge = badgeBox(count);
    clearAround(painter, badge);
    if (count) {
      drawCount(painter, badge, *count);
    } else {
      drawPlus(painter, badge);
    }
    return pixmap_;
  }

 private:
  [[nodiscard]] int part(double share) const {
    return static_cast<int>(std::lround(side_ * share));
  }

  [[nodiscard]] QRect badgeBox(std::optional<int> count) const {
    const int height = part(count ? 0.60 : 0.52);
    const int width = count && *count > MOST_SHOWN ? part(0.78) : height;
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

  void clearAround(QPainter& painter, const QRect& badge) const {
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    fillPill(painter, badge.adjusted(-stroke_, -stroke_, stroke_, stroke_), Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  }

  void drawPlus(QPainter& painter, const QRect& badge) const {
    fillPill(painter, badge, INK);
    fillPill(painter, badge.adjusted(stroke_, stroke_, -stroke_, -stroke_), PAPER);
    const int arm = badge.width() / 2 - 2 * stroke_;
    const int middle = badge.width() / 2 - stroke_ / 2;
    const int span = 2 * arm + (badge.width() - stroke_) % 2;
    const int start = (badge.width() - span) / 2;
    painter.fillRect(badge.left() + start, badge.top() + middle, span, stroke_, INK);
    painter.fillRect(badge.left() + middle, badge.top() + start, stroke_, span, INK);
  }

  void drawCount(QPainter& painter, const QRect& badge, int count) const {
    fillPill(painter, badge, COUNT_FILL);
    QFont font;
    font.setPixelSize(badge.height() * 4 / 5);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    const QString digits = count > MOST_SHOWN ? QString::number(MOST_SHOWN) + QLatin1Char('+')
                                              : QString::number(count);
    painter.drawText(badge, Qt::AlignCenter, digits);
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

QIcon statusSymbol(std::optional<int> count) {
  QIcon icon;
  for (const int side : SIZES) icon.addPixmap(Drawing(side).of(count));
  return icon;
}

std::optional<int> countIn(const std::string& title) {
  static const QRegularExpression atTheEnd(QStringLiteral("\\((\\d+)\\)$"));
  const auto found = atTheEnd.match(QString::fromStdString(title));
  if (!found.hasMatch()) return std::nullopt;
  return found.captured(1).toInt();
}

}  // namespace notewick
