#include "platform/linux/controls/panel_button.h"

#include <QPainter>

#include "platform/linux/controls/panel_look.h"

namespace notewick {
namespace {

constexpr double RADIUS = 4.0;

ChosenColours coloursOf(const QAbstractButton& button) {
  const QPalette& colours = button.palette();
  if (button.isChecked()) return chosenColours(colours);
  const QColor plain = colours.color(QPalette::Button);
  if (!button.isEnabled()) return {plain, disabledTextColour(colours)};
  const QColor face = button.isDown()       ? plain.darker(115)
                      : button.underMouse() ? plain.lighter(107)
                                            : plain;
  return {face, colours.color(QPalette::ButtonText)};
}

}  // namespace

PanelButton::PanelButton(const std::string& title, const std::string& accessibleName, Size size)
    : QPushButton(buttonText(title)) {
  setAccessibleName(fromUtf8(accessibleName));
  setFocusPolicy(Qt::TabFocus);
  const bool isRegular = size == Size::regular;
  setFont(panelFont(isRegular ? 13 : 11));
  const int width = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
  setFixedSize(width + 2 * points(isRegular ? 14 : 8), points(isRegular ? 26 : 22));
}

void PanelButton::keyPressEvent(QKeyEvent* event) {
  if (isReturn(*event) && event->isAutoRepeat()) return;
  QPushButton::keyPressEvent(event);
}

void PanelButton::paintEvent(QPaintEvent* /*event*/) {
  paintButton(*this, [this](double inset) {
    QPainterPath path;
    path.addRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), points(RADIUS),
                        points(RADIUS));
    return path;
  });
}

void paintButton(QAbstractButton& button,
                 const std::function<QPainterPath(double inset)>& outline) {
  QPainter painter(&button);
  painter.setRenderHint(QPainter::Antialiasing);
  const ChosenColours colours = coloursOf(button);
  painter.setPen(outlineColour(button.palette()));
  painter.setBrush(colours.face);
  painter.drawPath(outline(0.5));
  painter.setPen(colours.text);
  painter.drawText(button.rect(), Qt::AlignCenter | Qt::TextHideMnemonic, button.text());
  if (!button.hasFocus()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(focusColour(button.palette(), colours.face), points(2)));
  painter.drawPath(outline(points(2.5)));
}

}  // namespace notewick
