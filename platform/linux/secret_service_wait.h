#pragma once

#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>
#include <functional>

class QDBusMessage;

namespace notewick {

/// Waits, without blocking and as long as it takes, for a Secret Service that did not answer in
/// time: one that hangs, or is being started. It ends when the service answers, and also when the
/// service turns out not to come. Main thread.
class SecretServiceWait : public QObject {
 public:
  /// `ended` is called once, in a later turn.
  explicit SecretServiceWait(std::function<void()> ended);

 private:
  void call(const QDBusMessage& message, void (SecretServiceWait::*then)(const QDBusMessage&));
  void pingAnswered(const QDBusMessage& answer);
  void walletStarted(const QDBusMessage& answer);
  void end();

  std::function<void()> ended_;
  QDBusServiceWatcher watcher_;
  QTimer grace_;  ///< runs while KWallet is there and the service is not
};

}  // namespace notewick
