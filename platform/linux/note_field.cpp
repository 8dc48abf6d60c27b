#include "platform/linux/note_field.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

#include "platform/linux/floating_panel.h"
#include "platform/linux/panel_look.h"

namespace notewick {

NoteField::NoteField() {
  setFont(panelFont(13));
  setTabChangesFocus(true);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  document()->setDocumentMargin(points(6));
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

void NoteField::keyPressEvent(QKeyEvent* event) {
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (isReturn && event->modifiers().testFlag(Qt::ControlModifier)) return event->ignore();
  QPlainTextEdit::keyPressEvent(event);
}

}  // namespace notewick
