#include "platform/linux/session/single_instance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QStandardPaths>
#include <utility>

namespace notewick {
namespace {

constexpr const char* NAME = "tools.velk.Notewick";
constexpr const char* PATH = "/tools/velk/Notewick";
constexpr int PATIENCE_MILLISECONDS = 2000;

std::string lockPath() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  return folder.toStdString() + "/notewick.lock";
}

}  // namespace

LockFile::~LockFile() {
  if (descriptor_ >= 0) close(descriptor_);
}

bool LockFile::claim() {
  descriptor_ = open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
  return descriptor_ < 0 || flock(descriptor_, LOCK_EX | LOCK_NB) == 0;
}

SingleInstance::SingleInstance(std::function<void()> activated)
    : activated_(std::move(activated)), lock_(lockPath()) {}

bool SingleInstance::claim() {
  const bool named = !QDBusConnection::sessionBus().isConnected() || claimName();
  return named && lock_.claim();
}

bool SingleInstance::claimName() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  bus.registerObject(PATH, this, QDBusConnection::ExportScriptableSlots);
  if (bus.registerService(NAME)) return true;
  bus.call(QDBusMessage::createMethodCall(NAME, PATH, NAME, "Activate"), QDBus::Block,
           PATIENCE_MILLISECONDS);
  return false;
}

void SingleInstance::Activate() {
  QMetaObject::invokeMethod(
      this, [this] { activated_(); }, Qt::QueuedConnection);
}

}  // namespace notewick

#include "moc_single_instance.cpp"
