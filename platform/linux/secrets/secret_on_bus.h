#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QMap>
#include <QString>

namespace notewick {

/// A secret as the Secret Service API hands it over.
struct SecretOnBus {
  QDBusObjectPath session;
  QByteArray parameters;
  QByteArray value;
  QString contentType;
};

/// What an item is found by.
using SecretAttributes = QMap<QString, QString>;

QDBusArgument& operator<<(QDBusArgument& argument, const SecretOnBus& secret);
const QDBusArgument& operator>>(const QDBusArgument& argument, SecretOnBus& secret);

/// Makes the types above known to the bus; as often as one likes.
void registerSecretTypes();

}  // namespace notewick

Q_DECLARE_METATYPE(notewick::SecretOnBus)
