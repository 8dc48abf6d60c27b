#pragma once

#include <QDBusObjectPath>
#include <optional>
#include <string>

#include "platform/linux/secrets/secret_bus.h"
#include "platform/linux/secrets/secret_cipher.h"

namespace notewick {

/// A session with the secret service, in which secrets are handed over: sealed where it has a
/// cipher, else in the clear. Its end tells the service, without waiting and
/// without starting it. Main thread.
class SecretSession {
 public:
  SecretSession(QDBusObjectPath path, std::optional<SecretCipher> cipher)
      : path_(std::move(path)), cipher_(std::move(cipher)) {}
  SecretSession(SecretSession&& other) noexcept;
  SecretSession& operator=(SecretSession&&) = delete;
  ~SecretSession();

  [[nodiscard]] const QDBusObjectPath& path() const { return path_; }

  /// `refused` where the secret could not be sealed.
  [[nodiscard]] SecretServiceAnswer<SecretOnBus> wrapped(const std::string& secret) const;
  /// `refused` where it was not sealed in this session.
  [[nodiscard]] SecretServiceAnswer<std::string> unwrapped(const SecretOnBus& secret) const;

 private:
  QDBusObjectPath path_;  ///< empty once moved from
  std::optional<SecretCipher> cipher_;
};

}  // namespace notewick
