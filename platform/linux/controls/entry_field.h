#pragma once

#include <QLineEdit>
#include <string>

namespace notewick {

/// A one-line field whose outline and example text are legible in every palette.
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
