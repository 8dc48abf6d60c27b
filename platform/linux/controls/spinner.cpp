#include "platform/linux/controls/spinner.h"

#include <QPainter>

#include "platform/linux/controls/panel_look.h"

namespace notewick {
namespace {

using namespace std::chrono_literals;

constexpr int SPOKES = 12;
constexpr double SIDE = 16;

}  // namespace

Spinner::Spinner() {
  setFixedSize(points(SIDE), points(SIDE));
  turning_.setInterval(80ms);
  connect(&turning_, &QTimer::timeout, this, [this] {
    step_ = (step_ + 1) % SPOKES;
    update();
  });
  hide();
}

void Spinner::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  turning_.stop();
}

void Spinner::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  turning_.start();
}

void Spinner::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(width() / 2.0, height() / 2.0);
  painter.scale(width() / SIDE, height() / SIDE);
  QColor colour = palette().color(QPalette::WindowText);
  for (int spoke = 0; spoke < SPOKES; ++spoke) {
    const int age = (step_ - spoke + SPOKES) % SPOKES;
    colour.setAlphaF(0.9F - 0.7F * static_cast<float>(age) / SPOKES);
    painter.save();
    painter.rotate(spoke * 360.0 / SPOKES);
    painter.setPen(QPen(colour, 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(0, -4), QPointF(0, -6.8));
    painter.restore();
  }
}

}  // namespace notewick
