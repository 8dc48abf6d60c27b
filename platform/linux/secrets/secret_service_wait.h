#pragma once

#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>
#include <functional>

#include "platform/secret_store.h"

class QDBusMessage;

namespace notewick {

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
