#pragma once

#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>
#include <functional>

namespace notewick {

/// Listens to what the Secret Service tells of itself, whoever caused it: items written and
/// removed, collections opened, locked, made and removed, the service come and gone. Asks the
/// service nothing. Main thread.
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

}  // namespace notewick
