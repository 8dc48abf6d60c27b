#include "platform/linux/secrets/secret_on_bus.h"

#include <QDBusMetaType>

namespace notewick {

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

}  // namespace notewick
