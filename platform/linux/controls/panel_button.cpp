#include "platform/linux/controls/panel_button.h"

#include "platform/linux/controls/panel_look.h"

namespace notewick {

PanelButton::PanelButton(const std::string& title, const std::string& accessibleName, Size size)
    : QPushButton(buttonText(title)) {
  setAccessibleName(fromUtf8(accessibleName));
  setFocusPolicy(Qt::TabFocus);
  const bool isRegular = size == Size::regular;
  setFont(panelFont(isRegular ? 13 : 11));
  const int width = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
  setFixedSize(width + 2 * points(isRegular ? 14 : 8), points(isRegular ? 26 : 22));
}

void PanelButton::keyPressEvent(QKeyEvent* event) {
  if (isReturn(*event) && event->isAutoRepeat()) return;
  QPushButton::keyPressEvent(event);
}

}  // namespace notewick
