#include "platform/linux/announcing_label.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace notewick {
namespace {

/// Screen readers speak a notification when it starts to show.
QAccessibleInterface* asNotification(const QString& /*className*/, QObject* object) {
  auto* const label = dynamic_cast<AnnouncingLabel*>(object);
  return label != nullptr ? new QAccessibleWidget(label, QAccessible::Notification) : nullptr;
}

}  // namespace

AnnouncingLabel::AnnouncingLabel(double size, Tint tint) : Label("", size, tint) {
  static const bool installed = [] {
    QAccessible::installFactory(asNotification);
    return true;
  }();
  static_cast<void>(installed);
  hide();
}

void AnnouncingLabel::announce(const std::string& content) {
  const QString wanted = fromUtf8(content);
  if (wanted == text()) return;
  hide();
  display(content);
  setAccessibleName(wanted);
  setVisible(!content.empty());
  QAccessibleEvent alert(this, QAccessible::Alert);
  if (!content.empty()) QAccessible::updateAccessibility(&alert);
}

}  // namespace notewick
