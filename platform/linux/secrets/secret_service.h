#pragma once

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDeadlineTimer>
#include <QList>
#include <QVariantList>
#include <chrono>
#include <optional>
#include <string>

#include "platform/linux/secrets/secret_bus.h"
#include "platform/linux/secrets/secret_session.h"
#include "platform/secret_store.h"

namespace notewick {

/// The longest that one conversation waits for answers, so that a service that hangs keeps the main
/// thread for a quarter of a second at most. One that only takes longer counts as hanging until it
/// answers, which is waited for without blocking.
inline constexpr std::chrono::milliseconds SECRET_SERVICE_PATIENCE{200};

/// One conversation with the Secret Service (the freedesktop Secret Service API, 0.2): its calls as
/// functions. The calls block, because the port answers at once; all of them together take at most
/// as long as the conversation's patience. No call makes the service ask the user anything, and
/// only `start` starts it. Main thread.
///
/// The objects of the service: a collection is what the user locks and unlocks, and holds items; an
/// item has attributes, by which it is found, and a secret. A secret is handed over in a session,
/// which says how it is encrypted on its way. Ours encrypts it (`SecretCipher`), because any
/// program of the user may record the session bus; with a service that does not offer that, it goes
/// over the bus, a local socket of this user, in the clear.
class SecretServiceConversation {
 public:
  explicit SecretServiceConversation(std::chrono::milliseconds patience) : end_(patience) {}

  /// Whether some program owns the service's name.
  [[nodiscard]] SecretServiceAnswer<bool> isRunning() const;
  /// Has the bus start the service. KWallet, which the bus knows by a name of its own only, is
  /// there as the service a moment after it has started: until then it is `unanswered`.
  [[nodiscard]] SecretServiceAnswer<void> start() const;

  [[nodiscard]] SecretServiceAnswer<SecretItems> search(const SecretKey& key) const;
  [[nodiscard]] SecretServiceAnswer<std::string> secretOf(const QDBusObjectPath& item) const;
  [[nodiscard]] SecretServiceAnswer<void> replaceSecret(const QDBusObjectPath& item,
                                                        const std::string& secret) const;
  [[nodiscard]] SecretServiceAnswer<void> remove(const QDBusObjectPath& item) const;

  /// The collection where new items belong; absent when the user has none yet.
  [[nodiscard]] SecretServiceAnswer<std::optional<QDBusObjectPath>> defaultCollection() const;
  [[nodiscard]] SecretServiceAnswer<bool> isLocked(const QDBusObjectPath& collection) const;
  [[nodiscard]] SecretServiceAnswer<void> create(const QDBusObjectPath& collection,
                                                 const SecretKey& key,
                                                 const std::string& secret) const;

 private:
  [[nodiscard]] SecretServiceAnswer<void> start(const char* program) const;
  [[nodiscard]] SecretServiceAnswer<QVariantList> call(const QString& path,
                                                       const QString& interface,
                                                       const QString& member,
                                                       const QVariantList& arguments) const;
  /// The arguments of the reply. Unlike a plain call over the bus it starts no service.
  [[nodiscard]] SecretServiceAnswer<QVariantList> send(QDBusMessage message) const;
  [[nodiscard]] SecretServiceAnswer<SecretSession> openSession() const;
  [[nodiscard]] SecretServiceAnswer<SecretSession> openPlainSession() const;

  QDeadlineTimer end_;
};

}  // namespace notewick
