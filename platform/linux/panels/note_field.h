#pragma once

#include <QPlainTextEdit>

namespace notewick {

/// The field the note is written in. Tab leaves it; Return breaks the line; Control with Return is
/// left to the window, whose default button it presses.
class NoteField : public QPlainTextEdit {
 public:
  NoteField();

  /// The text as it was written. Qt's toPlainText() turns the user's no-break spaces into
  /// ordinary ones.
  [[nodiscard]] QString text() const;

 protected:
  bool event(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace notewick
