#pragma once

#include <QLineEdit>
#include <string>

namespace notewick {

/// Qt's one-line field with an outline and an example text that are legible in every palette: those
/// of Fusion stay below a contrast of 3 and 4.5 in many. The example is there for screen readers,
/// too, while nothing has been typed.
class EntryField : public QLineEdit {
 public:
  explicit EntryField(const std::string& accessibleName, const std::string& example = "");

 protected:
  void changeEvent(QEvent* event) override;
  /// Reports the focus to screen readers, and not the selection that comes with it. Qt would report
  /// the selection first, and Orca would then skip the field's name.
  void focusInEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void colourExample();
};

/// Draws the outline of a control over its edge: a contrast of 3 to the window, and the focus
/// colour, twice as thick, while it has the keyboard.
void drawOutline(QWidget& control);

}  // namespace notewick
