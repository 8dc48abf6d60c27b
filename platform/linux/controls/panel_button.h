#pragma once

#include <QKeyEvent>
#include <QPushButton>
#include <string>

namespace notewick {

/// Whether it is the Return key, or Enter on the number pad. In a panel it presses the window's
/// default button, on every desktop, wherever no control has a use for it.
[[nodiscard]] inline bool isReturn(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// Qt's push button with as much room around its title in every style. A click leaves the keyboard
/// in the field where the user types. A key that is held down presses it once: the next press could
/// be for the row that took the place of this one.
class PanelButton : public QPushButton {
 public:
  enum class Size { regular, small };

  PanelButton(const std::string& title, const std::string& accessibleName, Size size);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace notewick
