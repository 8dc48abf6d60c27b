#include "platform/linux/tray/exported_menu.h"

#include <QCoreApplication>
#include <QDBusConnection>

namespace notewick {

QObject* exportedTrayMenu() {
  const auto connection =
      QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid());
  return QDBusConnection(connection).objectRegisteredAt(QStringLiteral("/MenuBar"));
}

}  // namespace notewick
