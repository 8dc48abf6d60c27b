#pragma once

#include <QPlainTextEdit>

namespace notewick {

/// The field the note is written in. Tab leaves it; Return breaks the line; Control with Return is
/// left to the window, whose default button it presses.
class NoteField : public QPlainTextEdit {
 public:
  NoteField();

 protected:
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace notewick
