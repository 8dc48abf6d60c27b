#include "platform/linux/controls/panel_button.h"

#include "platform/linux/controls/panel_look.h"

namespace notewick {

PanelButton::PanelButton(const std::string& title, const std::string& accessibleName, Size size)
    : QPushButton(buttonText(title)), size_(size) {
  setAccessibleName(fromUtf8(accessibleName));
  setFont(panelFont(size == Size::regular ? 13 : 11));
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize PanelButton::sizeHint() const {
  const bool regular = size_ == Size::regular;
  const int title = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
  return {title + 2 * points(regular ? 14 : 8), points(regular ? 26 : 22)};
}

void PanelButton::keyPressEvent(QKeyEvent* event) {
  if (isReturn(*event) && event->isAutoRepeat()) return;
  QPushButton::keyPressEvent(event);
}

}  // namespace notewick
