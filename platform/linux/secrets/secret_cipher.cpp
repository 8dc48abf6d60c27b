#include "platform/linux/secrets/secret_cipher.h"

#include <openssl/bn.h>
#include <openssl/core_names.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/kdf.h>
#include <openssl/params.h>
#include <openssl/rand.h>

#include <array>
#include <vector>

#include "platform/freed.h"

namespace notewick {
namespace {

constexpr int GROUP_SIZE = 128;  // bytes
constexpr std::size_t KEY_SIZE = 16;
constexpr int BLOCK_SIZE = 16;

using Context = std::unique_ptr<EVP_CIPHER_CTX, Freed<EVP_CIPHER_CTX_free>>;
using Derivation = std::unique_ptr<EVP_KDF, Freed<EVP_KDF_free>>;
using DerivationContext = std::unique_ptr<EVP_KDF_CTX, Freed<EVP_KDF_CTX_free>>;
using WorkingMemory = std::unique_ptr<BN_CTX, Freed<BN_CTX_free>>;

/// The prime of the group, whose generator is 2.
const BIGNUM* prime() {
  static const BIGNUM* const number = BN_get_rfc2409_prime_1024(nullptr);
  return number;
}

std::vector<unsigned char> bytesOf(const BIGNUM* number) {
  std::vector<unsigned char> bytes(GROUP_SIZE);
  const bool fits = BN_bn2binpad(number, bytes.data(), GROUP_SIZE) == GROUP_SIZE;
  return fits ? bytes : std::vector<unsigned char>();
}

/// HKDF without salt and information (RFC 5869); empty when it fails.
std::string derivedKey(std::vector<unsigned char> shared) {
  const Derivation hkdf(EVP_KDF_fetch(nullptr, "HKDF", nullptr));
  const DerivationContext context(EVP_KDF_CTX_new(hkdf.get()));
  std::array<char, 7> digest{"SHA256"};
  const std::array<OSSL_PARAM, 3> parameters = {
      OSSL_PARAM_construct_utf8_string(OSSL_KDF_PARAM_DIGEST, digest.data(), 0),
      OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_KEY, shared.data(), shared.size()),
      OSSL_PARAM_construct_end()};
  std::string key(KEY_SIZE, '\0');
  const int derived = EVP_KDF_derive(context.get(), reinterpret_cast<unsigned char*>(key.data()),
                                     key.size(), parameters.data());
  OPENSSL_cleanse(shared.data(), shared.size());
  return derived == 1 ? key : "";
}

const unsigned char* bytes(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

std::string_view view(const QByteArray& bytes) {
  return {bytes.data(), static_cast<std::size_t>(bytes.size())};
}

enum class Direction { decrypt = 0, encrypt = 1 };

std::optional<std::string> ciphered(Direction direction, std::string_view key,
                                    std::string_view vector, std::string_view text) {
  const Context context(EVP_CIPHER_CTX_new());
  std::string out(text.size() + BLOCK_SIZE, '\0');
  auto* const start = reinterpret_cast<unsigned char*>(out.data());
  int size = 0;
  int rest = 0;
  const bool done = EVP_CipherInit_ex2(context.get(), EVP_aes_128_cbc(), bytes(key), bytes(vector),
                                       static_cast<int>(direction), nullptr) == 1 &&
                    EVP_CipherUpdate(context.get(), start, &size, bytes(text),
                                     static_cast<int>(text.size())) == 1 &&
                    EVP_CipherFinal_ex(context.get(), start + size, &rest) == 1;
  if (!done) return std::nullopt;
  out.resize(static_cast<std::size_t>(size) + static_cast<std::size_t>(rest));
  return out;
}

}  // namespace

void SecretCipher::FreesNumber::operator()(bignum_st* number) const {
  BN_clear_free(number);
}

SecretCipher::SecretCipher() : privateKey_(BN_secure_new()) {
  const std::unique_ptr<BIGNUM, FreesNumber> generator(BN_new());
  const bool drawn = privateKey_ && generator && BN_set_word(generator.get(), 2) == 1 &&
                     BN_priv_rand_range(privateKey_.get(), prime()) == 1;
  if (drawn) publicKey_ = raised(generator.get(), privateKey_.get());
}

QByteArray SecretCipher::publicKey() const {
  if (!publicKey_) return {};
  const auto key = bytesOf(publicKey_.get());
  return {reinterpret_cast<const char*>(key.data()), static_cast<qsizetype>(key.size())};
}

bool SecretCipher::agree(const QByteArray& theirs) {
  const Number number(BN_bin2bn(bytes(view(theirs)), static_cast<int>(theirs.size()), nullptr));
  const Number largest(BN_dup(prime()));
  const bool isKey = publicKey_ && number && largest && BN_sub_word(largest.get(), 2) == 1 &&
                     BN_cmp(number.get(), BN_value_one()) > 0 &&
                     BN_cmp(number.get(), largest.get()) <= 0;
  if (!isKey) return false;
  const Number shared = raised(number.get(), privateKey_.get());
  key_ = shared ? derivedKey(bytesOf(shared.get())) : "";
  return !key_.empty();
}

SecretCipher::Number SecretCipher::raised(const bignum_st* base, const bignum_st* exponent) {
  const WorkingMemory memory(BN_CTX_new());
  Number power(BN_new());
  const bool done =
      power && memory &&
      BN_mod_exp_mont_consttime(power.get(), base, exponent, prime(), memory.get(), nullptr) == 1;
  return done ? std::move(power) : nullptr;
}

std::optional<SealedSecret> SecretCipher::seal(std::string_view secret) const {
  std::array<unsigned char, BLOCK_SIZE> drawn{};
  if (RAND_bytes(drawn.data(), BLOCK_SIZE) != 1) return std::nullopt;
  const QByteArray vector(reinterpret_cast<const char*>(drawn.data()), BLOCK_SIZE);
  const auto value = ciphered(Direction::encrypt, key_, view(vector), secret);
  if (!value) return std::nullopt;
  return SealedSecret{vector, QByteArray::fromStdString(*value)};
}

std::optional<std::string> SecretCipher::open(const SealedSecret& sealed) const {
  if (sealed.parameters.size() != BLOCK_SIZE) return std::nullopt;
  return ciphered(Direction::decrypt, key_, view(sealed.parameters), view(sealed.value));
}

}  // namespace notewick
