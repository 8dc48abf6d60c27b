#include "platform/linux/controls/screen_reader_role.h"

#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QVariant>
#include <QWidget>

namespace notewick {
namespace {

constexpr const char* PROPERTY = "screenReaderRole";

/// Tells that it stands in the application itself: before it speaks a notification, Orca reads
/// all that the notification stands in, for a dialogue with every label in it.
class Announcement : public QAccessibleWidget {
 public:
  explicit Announcement(QWidget* widget)
      : QAccessibleWidget(widget, QAccessible::Role::Notification) {}

  [[nodiscard]] QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(qApp);
  }
};

QAccessibleInterface* inItsRole(const QString& /*className*/, QObject* object) {
  const QVariant role = object->property(PROPERTY);
  if (!role.isValid()) return nullptr;
  auto* const widget = static_cast<QWidget*>(object);
  if (role.toInt() == QAccessible::Role::Notification) return new Announcement(widget);
  return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void setScreenReaderRole(QWidget& widget, QAccessible::Role role) {
  widget.setProperty(PROPERTY, static_cast<int>(role));
  QAccessible::installFactory(inItsRole);  // once, however often it is called
}

}  // namespace notewick
