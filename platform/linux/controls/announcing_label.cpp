#include "platform/linux/controls/announcing_label.h"

#include "platform/linux/controls/accessible_role.h"

namespace notewick {

AnnouncingLabel::AnnouncingLabel(double size, Tint tint) : Label("", size, tint) {
  setAccessibleRole(*this, QAccessible::Notification);
  hide();
}

void AnnouncingLabel::announce(const std::string& content) {
  const QString wanted = fromUtf8(content);
  if (wanted == accessibleName()) return;
  hide();
  display(content);
  setAccessibleName(wanted);
  setVisible(!content.empty());
  QAccessibleEvent alert(this, QAccessible::Alert);
  if (!content.empty()) QAccessible::updateAccessibility(&alert);
}

}  // namespace notewick
