#pragma once

#include <QLineEdit>
#include <string>

namespace notewick {

/// Qt's one-line field with an outline and an example text that are legible in every palette: those
/// of Fusion stay below a contrast of 3 and 4.5 in many.
class EntryField : public QLineEdit {
 public:
  explicit EntryField(const std::string& accessibleName);

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void colourExample();
};

/// Draws the outline of a field over its edge: a contrast of 3 to the window, and the palette's
/// highlight, twice as thick, while it has the keyboard.
void drawFieldOutline(QWidget& field);

}  // namespace notewick
