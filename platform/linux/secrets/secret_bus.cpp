#include "platform/linux/secrets/secret_bus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QTimer>
#include <limits>
#include <utility>

namespace notewick {
namespace {

using namespace secretService;

constexpr std::chrono::seconds PAUSE{1};

}  // namespace

QVariant secretService::attributesOf(const SecretKey& key) {
  return QVariant::fromValue(SecretAttributes{{"service", QString::fromStdString(key.service)},
                                              {"account", QString::fromStdString(key.account)}});
}

QDBusMessage secretService::startMessage(const char* program) {
  QDBusMessage request =
      QDBusMessage::createMethodCall(busName, busPath, busName, "StartServiceByName");
  constexpr uint noFlags = 0;
  request << program << noFlags;
  return request;
}

QDBusMessage secretService::searchMessage(const SecretKey& key) {
  registerSecretTypes();
  QDBusMessage question =
      QDBusMessage::createMethodCall(name, path, serviceInterface, "SearchItems");
  question << attributesOf(key);
  return question;
}

QDBusArgument& operator<<(QDBusArgument& argument, const SecretOnBus& secret) {
  argument.beginStructure();
  argument << secret.session << secret.parameters << secret.value << secret.contentType;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, SecretOnBus& secret) {
  argument.beginStructure();
  argument >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
  argument.endStructure();
  return argument;
}

void registerSecretTypes() {
  qDBusRegisterMetaType<SecretOnBus>();
  qDBusRegisterMetaType<SecretAttributes>();
}

SecretServiceFailure failureOf(const QDBusError& error) {
  if (isRefusedForLoad(error)) return SecretServiceFailure::unanswered;
  switch (error.type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
      return SecretServiceFailure::unanswered;
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
      return SecretServiceFailure::missing;
    default:
      break;
  }
  if (error.name() == "org.freedesktop.DBus.Error.NameHasNoOwner") {
    return SecretServiceFailure::missing;
  }
  const bool isLocked = error.name() == "org.freedesktop.Secret.Error.IsLocked";
  return isLocked ? SecretServiceFailure::locked : SecretServiceFailure::refused;
}

bool isRefusedForLoad(const QDBusError& error) {
  return error.type() == QDBusError::LimitsExceeded || error.type() == QDBusError::NoMemory;
}

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
