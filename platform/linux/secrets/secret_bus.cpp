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

using namespace secret_service;

constexpr std::chrono::seconds PAUSE{1};

/// What qdbus_cast reads, where the value has that type on the bus; of another type it would read a
/// list without end.
template <class T>
T valueOf(const QVariant& value) {
  const auto signature = QDBusMetaType::typeToSignature(QMetaType::fromType<T>());
  const bool fits = value.value<QDBusArgument>().currentSignature() == QLatin1String(signature);
  return fits ? qdbus_cast<T>(value) : T();
}

}  // namespace

QVariant secret_service::attributesOf(const SecretKey& key) {
  return QVariant::fromValue(SecretAttributes{{"service", QString::fromStdString(key.service)},
                                              {"account", QString::fromStdString(key.account)}});
}

QDBusMessage secret_service::startMessage(const char* program) {
  QDBusMessage request =
      QDBusMessage::createMethodCall(BUS_NAME, BUS_PATH, BUS_NAME, "StartServiceByName");
  constexpr uint NO_FLAGS = 0;
  request << program << NO_FLAGS;
  return request;
}

QDBusMessage secret_service::searchMessage(const SecretKey& key) {
  registerSecretTypes();
  QDBusMessage question =
      QDBusMessage::createMethodCall(NAME, PATH, SERVICE_INTERFACE, "SearchItems");
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

SecretItems itemsIn(const QVariantList& answer) {
  using Paths = QList<QDBusObjectPath>;
  return {valueOf<Paths>(answer.value(0)), valueOf<Paths>(answer.value(1))};
}

SecretOnBus secretIn(const QVariantList& answer) {
  return valueOf<SecretOnBus>(answer.value(0));
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
  constexpr int AS_LONG_AS_IT_TAKES = std::numeric_limits<int>::max();
  const auto call = QDBusConnection::sessionBus().asyncCall(message, AS_LONG_AS_IT_TAKES);
  auto* const watcher = new QDBusPendingCallWatcher(call, caller);
  const auto answered = [=, then = std::move(then)] {
    watcher->deleteLater();
    if (!isRefusedForLoad(watcher->error())) return then(watcher->reply());
    QTimer::singleShot(PAUSE, caller, [=] { callPatiently(message, caller, then); });
  };
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, caller, answered);
}

}  // namespace notewick
