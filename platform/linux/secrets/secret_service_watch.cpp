#include "platform/linux/secrets/secret_service_watch.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <utility>

#include "platform/linux/secrets/secret_bus.h"

namespace notewick {

using namespace secret_service;

namespace {

constexpr std::chrono::milliseconds MOMENT{20};

constexpr const char* ANY_PATH = "";

/// KWallet takes the service's name right after its own, unless the user has turned that off.
constexpr std::chrono::seconds GRACE{2};

}  // namespace

SecretServiceWatch::SecretServiceWatch(std::function<void()> changed)
    : watcher_(NAME, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange) {
  moment_.setSingleShot(true);
  moment_.setInterval(MOMENT);
  connect(&moment_, &QTimer::timeout, this, std::move(changed));
  connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this, &SecretServiceWatch::report);

  auto bus = QDBusConnection::sessionBus();
  for (const char* signal : {"CollectionCreated", "CollectionChanged", "CollectionDeleted"}) {
    bus.connect(NAME, PATH, SERVICE_INTERFACE, signal, this, SLOT(report()));
  }
  for (const char* signal : {"ItemCreated", "ItemChanged", "ItemDeleted"}) {
    bus.connect(NAME, ANY_PATH, COLLECTION_INTERFACE, signal, this, SLOT(report()));
  }
  bus.connect(NAME, ANY_PATH, PROPERTIES_INTERFACE, "PropertiesChanged", {COLLECTION_INTERFACE},
              QString(), this, SLOT(report()));
}

void SecretServiceWatch::report() {
  if (!moment_.isActive()) moment_.start();
}

SecretServiceWait::SecretServiceWait(const SecretKey& key, Missing missing,
                                     std::function<void()> ended)
    : missing_(missing),
      ended_(std::move(ended)),
      watcher_(NAME, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange) {
  grace_.setSingleShot(true);
  grace_.setInterval(GRACE);
  connect(&grace_, &QTimer::timeout, this, &SecretServiceWait::end);
  connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
          &SecretServiceWait::ownerChanged);
  QDBusMessage question = searchMessage(key);
  question.setAutoStartService(missing == Missing::isStarted);
  callPatiently(question, this, [this](const QDBusMessage& answer) { answered(answer); });
}

void SecretServiceWait::answered(const QDBusMessage& answer) {
  const bool isMissing = failureOf(QDBusError(answer)) == SecretServiceFailure::missing;
  if (!isMissing || missing_ == Missing::stays) return end();
  callPatiently(startMessage(WALLET_NAME), this,
                [this](const QDBusMessage& started) { walletStarted(started); });
}

void SecretServiceWait::walletStarted(const QDBusMessage& answer) {
  if (answer.type() != QDBusMessage::ReplyMessage) return end();
  grace_.start();
}

void SecretServiceWait::ownerChanged(const QString& /*service*/, const QString& /*before*/,
                                     const QString& after) {
  if (!after.isEmpty()) end();
}

void SecretServiceWait::end() {
  if (const auto ended = std::exchange(ended_, nullptr)) ended();
}

}  // namespace notewick

#include "moc_secret_service_watch.cpp"
