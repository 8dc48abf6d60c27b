#include "platform/linux/controls/entry_field.h"

#include <QAccessible>
#include <QEvent>
#include <QPainter>

#include "platform/linux/controls/masked_typing.h"
#include "platform/linux/controls/panel_look.h"

namespace notewick {
namespace {

constexpr double FIELD_RADIUS = 2.0;

}  // namespace

EntryField::EntryField(const std::string& accessibleName, const std::string& example) {
  maskTyping();
  setAccessibleName(fromUtf8(accessibleName));
  setFont(panelFont(13));
  setTextMargins(points(2), 0, points(2), 0);
  setMinimumHeight(points(26));
  colourExample();
  const auto showExample = [this, shown = fromUtf8(example)] {
    setPlaceholderText(text().isEmpty() ? shown : QString());
  };
  showExample();
  connect(this, &QLineEdit::textChanged, this, showExample);
}

void EntryField::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) colourExample();
}

void EntryField::focusInEvent(QFocusEvent* event) {
  const auto telling = QAccessible::installUpdateHandler([](QAccessibleEvent*) {});
  QLineEdit::focusInEvent(event);
  QAccessible::installUpdateHandler(telling);
}

void EntryField::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  drawOutline(*this);
}

void EntryField::colourExample() {
  const QColor wanted = exampleColour(palette());
  if (palette().color(QPalette::PlaceholderText) == wanted) return;
  QPalette own;
  own.setColor(QPalette::PlaceholderText, wanted);
  setPalette(own);
}

void drawOutline(QWidget& control) {
  QPainter painter(&control);
  painter.setRenderHint(QPainter::Antialiasing);
  const QPalette& colours = control.palette();
  const bool isFocused = control.hasFocus();
  const double thickness = isFocused ? points(2) : 1;
  const QColor window = colours.color(QPalette::Window);
  painter.setPen(
      QPen(isFocused ? focusColour(colours, window) : outlineColour(colours), thickness));
  const double half = thickness / 2;
  painter.drawRoundedRect(QRectF(control.rect()).adjusted(half, half, -half, -half),
                          points(FIELD_RADIUS), points(FIELD_RADIUS));
}

}  // namespace notewick
