#include "platform/linux/secrets/secret_service_watch.h"

#include <QDBusConnection>
#include <utility>

#include "platform/linux/secrets/secret_service.h"

namespace notewick {

using namespace secretService;

namespace {

constexpr std::chrono::milliseconds MOMENT{20};

constexpr const char* anyPath = "";

}  // namespace

SecretServiceWatch::SecretServiceWatch(std::function<void()> changed)
    : watcher_(name, QDBusConnection::sessionBus(), QDBusServiceWatcher::WatchForOwnerChange) {
  moment_.setSingleShot(true);
  moment_.setInterval(MOMENT);
  connect(&moment_, &QTimer::timeout, this, std::move(changed));
  connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this, &SecretServiceWatch::report);

  auto bus = QDBusConnection::sessionBus();
  for (const char* signal : {"CollectionCreated", "CollectionChanged", "CollectionDeleted"}) {
    bus.connect(name, path, serviceInterface, signal, this, SLOT(report()));
  }
  for (const char* signal : {"ItemCreated", "ItemChanged", "ItemDeleted"}) {
    bus.connect(name, anyPath, collectionInterface, signal, this, SLOT(report()));
  }
  bus.connect(name, anyPath, propertiesInterface, "PropertiesChanged", {collectionInterface},
              QString(), this, SLOT(report()));
}

void SecretServiceWatch::report() {
  if (!moment_.isActive()) moment_.start();
}

}  // namespace notewick
