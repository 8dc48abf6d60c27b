#pragma once

#include <QByteArray>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct bignum_st;

namespace notewick {

/// A secret on its way over the bus.
struct SealedSecret {
  QByteArray parameters;  ///< the initialisation vector
  QByteArray value;
};

/// The cipher of one session with the secret service: both sides agree on a key that nobody who
/// reads the bus learns (Diffie-Hellman in the 1024-bit group of RFC 2409; HKDF with SHA-256; AES
/// of 128 bits in CBC mode, padded). The Secret Service API has no other and no newer algorithm.
/// It hides secrets from whoever records the bus; it does not prove who the service is.
class SecretCipher {
 public:
  /// As the API names it.
  static constexpr const char* ALGORITHM = "dh-ietf1024-sha256-aes128-cbc-pkcs7";

  /// Draws a private key of its own.
  SecretCipher();

  /// What the other side needs to agree on a key; empty where no key could be drawn.
  [[nodiscard]] QByteArray publicKey() const;

  /// Takes the other side's public key. False when that is none, or one that gives the key away.
  [[nodiscard]] bool agree(const QByteArray& theirs);

  /// Both are for after `agree`. Absent when the library fails, or when what came was not sealed
  /// with this key.
  [[nodiscard]] std::optional<SealedSecret> seal(std::string_view secret) const;
  [[nodiscard]] std::optional<std::string> open(const SealedSecret& sealed) const;

 private:
  struct FreesNumber {
    void operator()(bignum_st* number) const;
  };
  using Number = std::unique_ptr<bignum_st, FreesNumber>;

  [[nodiscard]] static Number raised(const bignum_st* base, const bignum_st* exponent);

  Number privateKey_;
  Number publicKey_;
  std::string key_;
};

}  // namespace notewick
