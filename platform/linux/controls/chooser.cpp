#include "platform/linux/controls/chooser.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QTextDocument>
#include <QWheelEvent>

#include "platform/linux/controls/entry_field.h"
#include "platform/linux/controls/panel_button.h"

namespace notewick {
namespace {

constexpr int STYLE_MARGIN = 2;  // what a style leaves free beside the text, both sides

}  // namespace

Chooser::Chooser() {
  setFocusPolicy(Qt::TabFocus);
  connect(this, &QComboBox::currentIndexChanged, this, &Chooser::tellChoice);
}

void Chooser::tellChoice(int index) {
  if (hasFocus() && !view()->isVisible()) view()->setCurrentIndex(model()->index(index, 0));
}

QString Chooser::shownText() const {
  QStyleOptionComboBox option;
  initStyleOption(&option);
  const QRect room =
      style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
  return fontMetrics().elidedText(currentText(), Qt::ElideRight, room.width() - STYLE_MARGIN);
}

bool Chooser::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const bool whole = shownText() == currentText();
    setToolTip(whole ? QString() : Qt::convertFromPlainText(currentText()));
  }
  return QComboBox::event(event);
}

void Chooser::keyPressEvent(QKeyEvent* event) {
  if (isReturn(*event)) return event->ignore();
  QComboBox::keyPressEvent(event);
}

void Chooser::paintEvent(QPaintEvent* /*event*/) {
  QStyleOptionComboBox option;
  initStyleOption(&option);
  option.currentText = shownText();
  QStylePainter painter(this);
  painter.drawComplexControl(QStyle::CC_ComboBox, option);
  painter.drawControl(QStyle::CE_ComboBoxLabel, option);
  painter.end();
  drawOutline(*this);
}

void Chooser::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace notewick
