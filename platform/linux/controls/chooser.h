#pragma once

#include <QComboBox>

namespace notewick {

/// A chooser that cuts its current item at the tail where it is wider than its room; the tool tip
/// then shows all of it. A click leaves the keyboard in the field where the user types, and the
/// wheel changes nothing: a note must not go to another person unnoticed. Return is left to the
/// window, also on desktops where it opens such a list.
class Chooser : public QComboBox {
 public:
  Chooser();

  /// The current item as far as it is shown.
  [[nodiscard]] QString shownText() const;

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  /// Screen readers speak what the arrow keys choose while the list is closed. Qt tells of it only
  /// as a new name of the chooser, which they do not speak.
  void tellChoice(int index);
};

}  // namespace notewick
