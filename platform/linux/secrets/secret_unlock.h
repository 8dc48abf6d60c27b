#pragma once

#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QList>
#include <QObject>
#include <functional>

class QDBusMessage;

namespace notewick {

/// Asks the user, through the Secret Service's own prompt, to open the default collection and the
/// one of each item given. Waits for the service and for the user as long as it takes, without
/// blocking, and never takes the question back, not even when it is destroyed: a service may crash
/// when it is cancelled. The question stays on the screen also when another program opens the store
/// meanwhile. It ends with the service that asks it, which may be followed by another at once.
class SecretUnlock : public QObject {
  Q_OBJECT

 public:
  /// What happens where there is no default collection.
  enum class Missing { stays, isMade };

  /// `ended` is called once, in a later turn.
  SecretUnlock(const QList<QDBusObjectPath>& items, Missing missing,
               std::function<void(bool opened)> ended);

 private slots:
  void promptCompleted(bool dismissed, const QDBusVariant& result);

 private:
  void call(const QString& path, const QString& interface, const QString& member,
            const QVariantList& arguments, void (SecretUnlock::*then)(const QDBusMessage&));
  void aliasRead(const QDBusMessage& answer);
  void unlockAnswered(const QDBusMessage& answer);
  void promptShown(const QDBusMessage& answer);
  void ownerChanged(const QString& service, const QString& before, const QString& after);
  void end(bool opened);

  QList<QDBusObjectPath> objects_;
  Missing missing_;
  std::function<void(bool opened)> ended_;
  QDBusServiceWatcher watcher_;
};

}  // namespace notewick
