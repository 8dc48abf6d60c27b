#pragma once

#include <openssl/ssl.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "platform/freed.h"

namespace notewick {

/// The certificate authorities that vouch for a server: the system's, and besides them those in a
/// file that the user names.
///
/// One store serves all connections. The system's authorities are looked up in its folder one by
/// one, when a certificate names them, and are then kept: reading all of them would cost every
/// connection many times its handshake.
class TrustedAuthorities {
 public:
  /// The file is read when the first connection needs it. One that is empty, missing, no regular
  /// file or without a certificate adds no authority.
  explicit TrustedAuthorities(std::string userFile) : userFile_(std::move(userFile)) {}

  /// Makes connections of this context trust these authorities and no others.
  void applyTo(SSL_CTX* context);

  /// When the certificate ends that was judged last, whatever the judgement; absent before.
  [[nodiscard]] std::optional<std::chrono::sys_seconds> certificateEnd() const { return end_; }

 private:
  using Store = std::unique_ptr<X509_STORE, Freed<X509_STORE_free>>;

  [[nodiscard]] static Store load(const std::string& userFile);
  static int noteEnd(int isGood, X509_STORE_CTX* judgement);

  std::string userFile_;
  Store store_;
  std::optional<std::chrono::sys_seconds> end_;
};

}  // namespace notewick
