#include "tools/local-service/records.h"

#include <argon2.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include <array>
#include <stdexcept>
#include <utility>

#include "assets.h"

namespace notewick::service {
namespace {

using nlohmann::json;

constexpr auto ACCESS = "access", REFRESH = "refresh";

const std::string SELECT_NOTES =
    "SELECT id, participant_id AS participantId, first_name || ' ' || last_name AS "
    "participantName, input, minutes AS durationMinutes, session_date AS sessionDate, "
    "captured_at / 1000.0 AS capturedAt FROM notes ";

std::string hexadecimal(const std::array<unsigned char, 32>& bytes) {
  constexpr std::string_view DIGITS = "0123456789abcdef";
  std::string text;
  for (const auto byte : bytes) text.append({DIGITS[byte >> 4], DIGITS[byte & 15]});
  return text;
}

/// 32 bytes from OpenSSL's generator, in hexadecimal.
std::string randomText() {
  std::array<unsigned char, 32> bytes{};
  if (RAND_bytes(bytes.data(), bytes.size()) != 1) throw std::runtime_error("no random bytes");
  return hexadecimal(bytes);
}

/// SHA-256. Enough for tokens, which are random; passwords take hashPassword.
std::string fingerprint(std::string_view token) {
  std::array<unsigned char, 32> digest{};
  if (EVP_Digest(token.data(), token.size(), digest.data(), nullptr, EVP_sha256(), nullptr) != 1) {
    throw std::runtime_error("no SHA-256");
  }
  return hexadecimal(digest);
}

/// Argon2id with 19 MiB and two passes (OWASP's password storage recommendation), as its encoded
/// text with salt and costs. Takes some tens of milliseconds, by intention.
std::string hashPassword(std::string_view password) {
  constexpr unsigned PASSES = 2, KIBIBYTES = 19 * 1024, LANES = 1;
  constexpr std::size_t HASH_SIZE = 32;
  const auto salt = randomText();
  std::array<char, 256> encoded{};
  const int result =
      argon2id_hash_encoded(PASSES, KIBIBYTES, LANES, password.data(), password.size(), salt.data(),
                            salt.size(), HASH_SIZE, encoded.data(), encoded.size());
  if (result != ARGON2_OK) throw std::runtime_error(argon2_error_message(result));
  return encoded.data();
}

bool passwordMatches(std::string_view password, const std::string& hash) {
  return argon2id_verify(hash.c_str(), password.data(), password.size()) == ARGON2_OK;
}

std::int64_t stamp(Time time) {
  return time.time_since_epoch().count();
}

std::optional<AccountId> accountIn(const json& rows) {
  if (rows.empty()) return std::nullopt;
  return rows[0].at("account").get<AccountId>();
}

}  // namespace

Records::Records(const std::string& file, Clock clock)
    : database_(file, assets::SCHEMA), clock_(std::move(clock)) {}

AccountId Records::saveAccount(const std::string& email, const std::string& password) {
  const json rows = database_.run(
      "INSERT INTO accounts (email, password_hash) VALUES (?, ?) ON CONFLICT (email) "
      "DO UPDATE SET password_hash = excluded.password_hash RETURNING id AS account",
      {email, hashPassword(password)});
  return rows.at(0).at("account").get<AccountId>();
}

void Records::saveParticipants(AccountId account, const json& participants) {
  database_.run("UPDATE accounts SET participants = ? WHERE id = ?",
                {participants.dump(), account});
}

std::optional<AccountId> Records::signIn(const std::string& email, const std::string& password) {
  const auto rows =
      database_.run("SELECT id AS account, password_hash FROM accounts WHERE email = ?", {email});
  if (rows.empty() || !passwordMatches(password, rows[0].at("password_hash"))) return std::nullopt;
  return accountIn(rows);
}

std::string Records::email(AccountId account) {
  return database_.run("SELECT email FROM accounts WHERE id = ?", {account}).at(0).at("email");
}

json Records::participants(AccountId account) {
  const auto rows = database_.run("SELECT participants FROM accounts WHERE id = ?", {account});
  return json::parse(rows.at(0).at("participants").get<std::string>());
}

json Records::openSession(AccountId account) {
  const auto expiry = clock_() + ACCESS_LIFETIME;
  return {{"accessToken", issueToken(account, ACCESS, stamp(expiry))},
          {"refreshToken", issueToken(account, REFRESH, nullptr)},
          {"expiresAt", stamp(expiry) / 1000}};
}

std::optional<json> Records::refreshSession(const std::string& refreshToken) {
  const auto now = clock_();
  database_.run("DELETE FROM tokens WHERE expires_at <= ? OR first_used_at < ?",
                {stamp(now), stamp(now - REFRESH_GRACE)});
  const auto account =
      accountIn(database_.run("UPDATE tokens SET first_used_at = coalesce(first_used_at, ?) "
                              "WHERE fingerprint = ? AND kind = ? RETURNING account",
                              {stamp(now), fingerprint(refreshToken), REFRESH}));
  return account ? std::optional(openSession(*account)) : std::nullopt;
}

std::optional<AccountId> Records::accountOf(const std::string& accessToken) {
  return accountIn(database_.run(
      "SELECT account FROM tokens WHERE fingerprint = ? AND kind = ? AND expires_at > ?",
      {fingerprint(accessToken), ACCESS, stamp(clock_())}));
}

std::string Records::issueToken(AccountId account, const char* kind, const json& expiry) {
  auto token = randomText();
  database_.run("INSERT INTO tokens (fingerprint, kind, account, expires_at) VALUES (?, ?, ?, ?)",
                {fingerprint(token), kind, account, expiry});
  return token;
}

std::string Records::addNote(AccountId account, const Note& note) {
  auto id = randomText();
  const auto& person = note.participant;
  database_.run(
      "INSERT INTO notes (id, account, participant_id, first_name, last_name, input, minutes, "
      "session_date, captured_at) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
      {id, account, person.at("id"), person.at("first_name"), person.at("last_name"), note.input,
       note.minutes, note.sessionDate, stamp(clock_())});
  return id;
}

json Records::notes() {
  return database_.run(SELECT_NOTES + "ORDER BY number");
}

json Records::newestNotes(AccountId account) {
  return database_.run(SELECT_NOTES + "WHERE account = ? ORDER BY number DESC", {account});
}

}  // namespace notewick::service
