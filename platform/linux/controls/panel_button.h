#pragma once

#include <QKeyEvent>
#include <QPainterPath>
#include <QPushButton>
#include <functional>
#include <string>

namespace notewick {

/// Whether it is the Return key, or Enter on the number pad. In a panel it presses the window's
/// default button, on every desktop, wherever no control has a use for it.
[[nodiscard]] inline bool isReturn(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// A push button with as much room around its title in every style, painted here: in Fusion, the
/// focus is not seen on a window's default button, and no outline in a palette of high contrast. A
/// click leaves the keyboard in the field where the user types. A key that is held down presses it
/// once: the next press could be for the row that took the place of this one.
class PanelButton : public QPushButton {
 public:
  enum class Size { regular, small };

  PanelButton(const std::string& title, const std::string& accessibleName, Size size);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

/// Paints a button within `outline`: its face, its title, and a ring while it has the keyboard.
/// `outline` gives the button's shape at this distance from its edge.
void paintButton(QAbstractButton& button, const std::function<QPainterPath(double inset)>& outline);

}  // namespace notewick
