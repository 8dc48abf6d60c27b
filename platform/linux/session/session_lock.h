#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QSet>
#include <QString>

namespace notewick {

/// Whether the user's screen is locked or blanked, as the desktop's screen saver tells the session
/// bus by the signal `ActiveChanged` (GNOME, KDE, Cinnamon, MATE, Xfce). An X server leaves the
/// last window active behind a locked screen. A locker that sends no signal goes unnoticed, and so
/// does a lock from before this object was made. Main thread.
class SessionLock final : public QObject {
  Q_OBJECT

 public:
  SessionLock();

  [[nodiscard]] bool isLocked() const { return !lockers_.isEmpty(); }

 private slots:
  void onActiveChanged(const QDBusMessage& signal);

 private:
  void forgetIfGone(const QString& locker);

  QDBusServiceWatcher watcher_;
  QSet<QString> lockers_;  ///< the bus names of the programs that hide the screen
};

}  // namespace notewick
