#include "platform/linux/single_instance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QStandardPaths>
#include <utility>

namespace notewick {
namespace {

constexpr const char* NAME = "tools.velk.Notewick";
constexpr const char* PATH = "/tools/velk/Notewick";
constexpr int PATIENCE_MILLISECONDS = 2000;

}  // namespace

SingleInstance::SingleInstance(std::function<void()> activated)
    : activated_(std::move(activated)) {}

bool SingleInstance::claim() {
  return QDBusConnection::sessionBus().isConnected() ? claimName() : claimLockFile();
}

bool SingleInstance::claimName() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  bus.registerObject(PATH, this, QDBusConnection::ExportScriptableSlots);
  if (bus.registerService(NAME)) return true;
  bus.call(QDBusMessage::createMethodCall(NAME, PATH, NAME, "Activate"), QDBus::Block,
           PATIENCE_MILLISECONDS);
  return false;
}

bool SingleInstance::claimLockFile() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  lock_ = std::make_unique<QLockFile>(folder + "/notewick.lock");
  lock_->setStaleLockTime(0);
  return lock_->tryLock() || lock_->error() != QLockFile::LockFailedError;
}

void SingleInstance::Activate() {
  QMetaObject::invokeMethod(
      this, [this] { activated_(); }, Qt::QueuedConnection);
}

}  // namespace notewick
