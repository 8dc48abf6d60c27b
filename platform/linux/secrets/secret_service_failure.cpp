#include "platform/linux/secrets/secret_service_failure.h"

namespace notewick {

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

}  // namespace notewick
