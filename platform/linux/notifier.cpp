#include "platform/linux/notifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QString>
#include <QVariantMap>

namespace notewick {
namespace {

QString escaped(const std::string& body) {
  QString text = QString::fromStdString(body);
  text.replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;");
  return text;
}

}  // namespace

void DBusNotifier::show(const std::string& title, const std::string& body) {
  const QVariantMap hints{{"sound-name", "message-new-instant"},
                          {"desktop-entry", "tools.velk.notewick"}};
  constexpr uint NOTHING_TO_REPLACE = 0;
  constexpr int SERVER_DECIDES_HOW_LONG = -1;
  QDBusMessage notify = QDBusMessage::createMethodCall("org.freedesktop.Notifications",
                                                       "/org/freedesktop/Notifications",
                                                       "org.freedesktop.Notifications", "Notify");
  notify << "VELK Notewick" << NOTHING_TO_REPLACE << "tools.velk.notewick"
         << QString::fromStdString(title) << escaped(body) << QStringList() << hints
         << SERVER_DECIDES_HOW_LONG;
  QDBusConnection::sessionBus().asyncCall(notify);
}

}  // namespace notewick
