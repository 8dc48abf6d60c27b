#pragma once

#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>
#include <functional>

#include "platform/secret_store.h"

class QDBusMessage;

namespace notewick {

/// Listens to the signals of the Secret Service, whoever caused them: items written and removed,
/// collections opened, locked, made and removed, the service started and ended. Asks the service
/// nothing. Main thread.
///
/// Whoever makes the watch before the first question misses nothing: the bus keeps the order, so a
/// change that the answer does not show yet is announced afterwards. What a service does not
/// announce stays unknown: GNOME Keyring is silent when an item that exists gets another secret,
/// and KWallet when a program opens a wallet past the Secret Service.
class SecretServiceWatch : public QObject {
  Q_OBJECT

 public:
  /// `changed` is called in a later turn, once for all that happened within a moment: a service
  /// sends a signal for each item of a collection that is opened.
  explicit SecretServiceWatch(std::function<void()> changed);

 public slots:
  /// Has `changed` called, as a signal of the service does.
  void report();

 private:
  QDBusServiceWatcher watcher_;
  QTimer moment_;
};

/// Waits, without blocking and as long as it takes, for a Secret Service that did not answer in
/// time: one that hangs, or is being started. It ends when the service answers a search, and also
/// when the service turns out not to come. A mere ping would not do: GNOME Keyring answers it also
/// while it hangs. Main thread.
class SecretServiceWait : public QObject {
 public:
  /// What happens where no service is running: it is started, or the wait ends.
  enum class Missing { isStarted, stays };

  /// `ended` is called once, in a later turn. `key` is what the service is asked for.
  SecretServiceWait(const SecretKey& key, Missing missing, std::function<void()> ended);

 private:
  void answered(const QDBusMessage& answer);
  void walletStarted(const QDBusMessage& answer);
  void ownerChanged(const QString& service, const QString& before, const QString& after);
  void end();

  Missing missing_;
  std::function<void()> ended_;
  QDBusServiceWatcher watcher_;
  QTimer grace_;  ///< runs while KWallet is there and the service is not
};

}  // namespace notewick
