#include "platform/linux/controls/entry_field.h"

#include <QEvent>
#include <QPainter>

#include "platform/linux/controls/panel_look.h"

namespace notewick {
namespace {

constexpr double FIELD_RADIUS = 2.0;

}  // namespace

EntryField::EntryField(const std::string& accessibleName) {
  setAccessibleName(fromUtf8(accessibleName));
  setFont(panelFont(13));
  setTextMargins(points(2), 0, points(2), 0);
  setMinimumHeight(points(26));
  colourExample();
}

void EntryField::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) colourExample();
}

void EntryField::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  drawFieldOutline(*this);
}

void EntryField::colourExample() {
  const QColor wanted = exampleColour(palette());
  if (palette().color(QPalette::PlaceholderText) == wanted) return;
  QPalette own;
  own.setColor(QPalette::PlaceholderText, wanted);
  setPalette(own);
}

void drawFieldOutline(QWidget& field) {
  QPainter painter(&field);
  painter.setRenderHint(QPainter::Antialiasing);
  const double thickness = field.hasFocus() ? 2.0 : 1.0;
  painter.setPen(QPen(field.hasFocus() ? field.palette().color(QPalette::Highlight)
                                       : outlineColour(field.palette()),
                      thickness));
  const double half = thickness / 2;
  painter.drawRoundedRect(QRectF(field.rect()).adjusted(half, half, -half, -half),
                          points(FIELD_RADIUS), points(FIELD_RADIUS));
}

}  // namespace notewick
