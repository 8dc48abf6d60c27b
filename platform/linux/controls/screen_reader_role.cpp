#include "platform/linux/controls/screen_reader_role.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace notewick {
namespace {

constexpr const char* PROPERTY = "screenReaderRole";

QAccessibleInterface* inItsRole(const QString& /*className*/, QObject* object) {
  const QVariant role = object->property(PROPERTY);
  if (!role.isValid()) return nullptr;
  return new QAccessibleWidget(static_cast<QWidget*>(object),
                               static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void setScreenReaderRole(QWidget& widget, QAccessible::Role role) {
  widget.setProperty(PROPERTY, static_cast<int>(role));
  QAccessible::installFactory(inItsRole);  // once, however often it is called
}

}  // namespace notewick
