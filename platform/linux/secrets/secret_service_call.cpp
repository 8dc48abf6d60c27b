#include "platform/linux/secrets/secret_service_call.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QTimer>
#include <limits>
#include <utility>

#include "platform/linux/secrets/secret_service_failure.h"

namespace notewick {
namespace {

constexpr std::chrono::seconds PAUSE{1};

}  // namespace

void callPatiently(const QDBusMessage& message, QObject* caller,
                   std::function<void(const QDBusMessage& answer)> then) {
  constexpr int asLongAsItTakes = std::numeric_limits<int>::max();
  const auto call = QDBusConnection::sessionBus().asyncCall(message, asLongAsItTakes);
  auto* const watcher = new QDBusPendingCallWatcher(call, caller);
  const auto answered = [=, then = std::move(then)] {
    watcher->deleteLater();
    if (!isRefusedForLoad(watcher->error())) return then(watcher->reply());
    QTimer::singleShot(PAUSE, caller, [=] { callPatiently(message, caller, then); });
  };
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, caller, answered);
}

}  // namespace notewick
