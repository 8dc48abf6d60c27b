#include "platform/linux/session/session_lock.h"

#include <QDBusPendingCallWatcher>

namespace notewick {
namespace {

constexpr auto INTERFACES = {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver",
                             "org.cinnamon.ScreenSaver", "org.mate.ScreenSaver",
                             "org.xfce.ScreenSaver"};

}  // namespace

SessionLock::SessionLock() {
  auto session = QDBusConnection::sessionBus();
  for (const auto* const interface : INTERFACES) {
    session.connect(QString(), QString(), interface, QStringLiteral("ActiveChanged"), this,
                    SLOT(onActiveChanged(QDBusMessage)));
  }
  watcher_.setConnection(session);
  connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this,
          [this](const QString& locker) { lockers_.remove(locker); });
}

void SessionLock::onActiveChanged(const QDBusMessage& signal) {
  const auto locker = signal.service();
  if (signal.arguments().value(0).toBool()) {
    lockers_.insert(locker);
    watcher_.addWatchedService(locker);
    forgetIfGone(locker);
  } else {
    lockers_.remove(locker);
    watcher_.removeWatchedService(locker);
  }
}

// If a program leaves the bus before we watch it, no signal announces its end.
void SessionLock::forgetIfGone(const QString& locker) {
  const QString bus = QStringLiteral("org.freedesktop.DBus");
  auto question = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                                 QStringLiteral("NameHasOwner"));
  question << locker;
  auto* const call =
      new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
  connect(call, &QDBusPendingCallWatcher::finished, this, [this, call, locker] {
    call->deleteLater();
    if (!call->reply().arguments().value(0).toBool()) lockers_.remove(locker);
  });
}

}  // namespace notewick

#include "moc_session_lock.cpp"
