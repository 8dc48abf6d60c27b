#include "platform/linux/secret_service_wait.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <limits>
#include <utility>

#include "platform/linux/secret_service.h"

namespace notewick {

using namespace secretService;

namespace {

/// KWallet takes the service's name right after its own, unless the user has turned that off.
constexpr std::chrono::seconds GRACE{2};

}  // namespace

SecretServiceWait::SecretServiceWait(std::function<void()> ended)
    : ended_(std::move(ended)),
      watcher_(name, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForRegistration) {
  grace_.setSingleShot(true);
  grace_.setInterval(GRACE);
  connect(&grace_, &QTimer::timeout, this, &SecretServiceWait::end);
  connect(&watcher_, &QDBusServiceWatcher::serviceRegistered, this, &SecretServiceWait::end);
  call(QDBusMessage::createMethodCall(name, path, "org.freedesktop.DBus.Peer", "Ping"),
       &SecretServiceWait::pingAnswered);
}

void SecretServiceWait::call(const QDBusMessage& message,
                             void (SecretServiceWait::*then)(const QDBusMessage&)) {
  constexpr int asLongAsItTakes = std::numeric_limits<int>::max();
  const auto answer = QDBusConnection::sessionBus().asyncCall(message, asLongAsItTakes);
  auto* const watcher = new QDBusPendingCallWatcher(answer, this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, then] {
    watcher->deleteLater();
    (this->*then)(watcher->reply());
  });
}

void SecretServiceWait::pingAnswered(const QDBusMessage& answer) {
  const bool isMissing = QDBusError(answer).type() == QDBusError::ServiceUnknown;
  if (!isMissing) return end();
  call(startMessage(walletName), &SecretServiceWait::walletStarted);
}

void SecretServiceWait::walletStarted(const QDBusMessage& answer) {
  if (answer.type() != QDBusMessage::ReplyMessage) return end();
  grace_.start();
}

void SecretServiceWait::end() {
  if (const auto ended = std::exchange(ended_, nullptr)) ended();
}

}  // namespace notewick
