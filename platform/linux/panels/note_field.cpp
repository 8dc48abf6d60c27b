#include "platform/linux/panels/note_field.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

#include "platform/linux/controls/entry_field.h"
#include "platform/linux/controls/panel_button.h"
#include "platform/linux/controls/panel_look.h"
#include "platform/linux/panels/floating_panel.h"

namespace notewick {
namespace {

constexpr double INSET = 4;
constexpr double TALLER_INSET = 2;  // 6 above and below the text in all
constexpr double EDGE = 2;

}  // namespace

NoteField::NoteField() {
  setFont(panelFont(13));
  setTabChangesFocus(true);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  document()->setDocumentMargin(points(INSET));
  setFrameStyle(QFrame::NoFrame);
  const int edge = points(EDGE);
  setViewportMargins(edge, edge + points(TALLER_INSET), edge, edge + points(TALLER_INSET));
}

QString NoteField::text() const {
  QString text = document()->toRawText();
  return text.replace(QChar::ParagraphSeparator, '\n').replace(QChar::LineSeparator, '\n');
}

bool NoteField::event(QEvent* event) {
  if (event->type() != QEvent::Paint) return QPlainTextEdit::event(event);
  QPainter(this).fillRect(rect(), palette().base());
  drawOutline(*this);
  return true;
}

/// The keyboard's request for a menu goes to the window where that has one; the mouse's is for the
/// editing commands.
void NoteField::contextMenuEvent(QContextMenuEvent* event) {
  const auto* const panel = dynamic_cast<const PanelWindow*>(window());
  const bool byKeyboard = event->reason() == QContextMenuEvent::Keyboard;
  if (byKeyboard && panel != nullptr && panel->windowMenu && panel->windowMenu()) {
    return event->ignore();
  }
  QPlainTextEdit::contextMenuEvent(event);
}

void NoteField::focusInEvent(QFocusEvent* event) {
  QPlainTextEdit::focusInEvent(event);
  update();
}

void NoteField::focusOutEvent(QFocusEvent* event) {
  QPlainTextEdit::focusOutEvent(event);
  update();
}

void NoteField::keyPressEvent(QKeyEvent* event) {
  if (isReturn(*event) && event->modifiers().testFlag(Qt::ControlModifier)) return event->ignore();
  QPlainTextEdit::keyPressEvent(event);
}

}  // namespace notewick
