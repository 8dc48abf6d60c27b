#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariantList>
#include <functional>
#include <tl/expected.hpp>

#include "platform/secret_store.h"

class QDBusMessage;
class QObject;

namespace notewick {

/// Names of the Secret Service API, and messages that more than one class sends.
namespace secret_service {
inline constexpr const char* BUS_NAME = "org.freedesktop.DBus";  ///< of the message bus itself
inline constexpr const char* BUS_PATH = "/org/freedesktop/DBus";
inline constexpr const char* NAME = "org.freedesktop.secrets";
inline constexpr const char* WALLET_NAME = "org.kde.kwalletd5";  ///< by which KWallet is started
inline constexpr const char* PATH = "/org/freedesktop/secrets";
inline constexpr const char* SERVICE_INTERFACE = "org.freedesktop.Secret.Service";
inline constexpr const char* COLLECTION_INTERFACE = "org.freedesktop.Secret.Collection";
inline constexpr const char* ITEM_INTERFACE = "org.freedesktop.Secret.Item";
inline constexpr const char* SESSION_INTERFACE = "org.freedesktop.Secret.Session";
inline constexpr const char* PROMPT_INTERFACE = "org.freedesktop.Secret.Prompt";
inline constexpr const char* PROPERTIES_INTERFACE = "org.freedesktop.DBus.Properties";
inline constexpr const char* NOTHING = "/";  ///< the path that stands for no object

/// The attributes by which the item of `key` is found.
[[nodiscard]] QVariant attributesOf(const SecretKey& key);
/// What asks the bus to start the program with this name.
[[nodiscard]] QDBusMessage startMessage(const char* program);
/// What asks the service for the items of `key`, locked or not.
[[nodiscard]] QDBusMessage searchMessage(const SecretKey& key);
}  // namespace secret_service

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

/// The items with the attributes of one key.
struct SecretItems {
  QList<QDBusObjectPath> unlocked;
  QList<QDBusObjectPath> locked;
};

// What an answer of the service holds. Any program can call itself the service and answer with
// values of any type: what is not as the API says counts as empty.

/// Of SearchItems.
[[nodiscard]] SecretItems itemsIn(const QVariantList& answer);
/// Of GetSecret.
[[nodiscard]] SecretOnBus secretIn(const QVariantList& answer);

/// Makes the types above known to Qt's bus library. Calling it again does nothing.
void registerSecretTypes();

/// Why the secret service gave no answer.
enum class SecretServiceFailure {
  missing,     ///< no program is the service, or there is no session bus
  unanswered,  ///< the question was not answered in time, or not delivered: asked again, it may be
  locked,      ///< what the service said to be open is locked by now
  refused,     ///< the service answered no
};

template <class T>
using SecretServiceAnswer = tl::expected<T, SecretServiceFailure>;

/// What an error on the bus means. Time-outs, and calls that were refused for load, say nothing
/// about the secret: they are `unanswered`. So is a call whose receiver left the bus before it
/// answered. Every error that is not known here is the service's own no, and `refused`.
[[nodiscard]] SecretServiceFailure failureOf(const QDBusError& error);

/// Whether the bus, or the service, turned the call away for want of room or memory. Nothing was
/// done then, and the same call can be made again.
[[nodiscard]] bool isRefusedForLoad(const QDBusError& error);

/// Makes a call on the session bus and hands the answer to `then`, in a later turn, however long it
/// takes, unless `caller` is gone by then. A call that is refused for load is made again a second
/// later, for as long as that lasts. Main thread.
void callPatiently(const QDBusMessage& message, QObject* caller,
                   std::function<void(const QDBusMessage& answer)> then);

}  // namespace notewick

Q_DECLARE_METATYPE(notewick::SecretOnBus)
