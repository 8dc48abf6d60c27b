#include "tools/local-service/secrets.h"

#include <argon2.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include <array>
#include <stdexcept>

namespace notewick::service {
namespace {

template <std::size_t SIZE>
std::array<unsigned char, SIZE> randomBytes() {
  std::array<unsigned char, SIZE> bytes{};
  if (RAND_bytes(bytes.data(), static_cast<int>(SIZE)) != 1) {
    throw std::runtime_error("no random bytes");
  }
  return bytes;
}

template <class Bytes>
std::string hexadecimal(const Bytes& bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (const unsigned char byte : bytes) {
    text += digits[byte >> 4];
    text += digits[byte & 15];
  }
  return text;
}

}  // namespace

std::string randomToken() {
  const auto bytes = randomBytes<32>();
  std::array<unsigned char, 45> encoded{};
  EVP_EncodeBlock(encoded.data(), bytes.data(), static_cast<int>(bytes.size()));
  std::string token(encoded.begin(), encoded.begin() + 43);
  for (char& letter : token) letter = letter == '+' ? '-' : letter == '/' ? '_' : letter;
  return token;
}

std::string randomUuid() {
  auto bytes = randomBytes<16>();
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0f) | 0x40);
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3f) | 0x80);
  auto text = hexadecimal(bytes);
  for (const auto at : {8U, 13U, 18U, 23U}) text.insert(at, 1, '-');
  return text;
}

std::string fingerprint(std::string_view token) {
  std::array<unsigned char, 32> digest{};
  if (EVP_Digest(token.data(), token.size(), digest.data(), nullptr, EVP_sha256(), nullptr) != 1) {
    throw std::runtime_error("no SHA-256");
  }
  return hexadecimal(digest);
}

std::string hashPassword(std::string_view password) {
  constexpr unsigned PASSES = 2, KIBIBYTES = 19 * 1024, LANES = 1;
  constexpr std::size_t HASH_SIZE = 32;
  const auto salt = randomBytes<16>();
  std::array<char, 128> encoded{};
  const int result =
      argon2id_hash_encoded(PASSES, KIBIBYTES, LANES, password.data(), password.size(), salt.data(),
                            salt.size(), HASH_SIZE, encoded.data(), encoded.size());
  if (result != ARGON2_OK) throw std::runtime_error(argon2_error_message(result));
  return encoded.data();
}

bool passwordMatches(std::string_view password, const std::string& hash) {
  return argon2id_verify(hash.c_str(), password.data(), password.size()) == ARGON2_OK;
}

}  // namespace notewick::service
