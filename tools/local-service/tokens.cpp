#include "tools/local-service/tokens.h"

#include <utility>

#include "tools/local-service/secrets.h"

namespace notewick::service {
namespace {

constexpr std::string_view ACCESS = "access", REFRESH = "refresh", PAGE = "page";

std::int64_t stamp(Time time) {
  return time.time_since_epoch().count();
}

}  // namespace

Tokens::Tokens(Database& database, Clock clock, std::chrono::seconds accessLifetime)
    : database_(database), clock_(std::move(clock)), accessLifetime_(accessLifetime) {
  Transaction transaction(database_);
  transaction.execute(
      "CREATE TABLE IF NOT EXISTS tokens (fingerprint TEXT PRIMARY KEY, kind TEXT NOT NULL, "
      "account INTEGER NOT NULL REFERENCES accounts, expires_at INTEGER, first_used_at INTEGER)");
  transaction.commit();
}

Session Tokens::open(AccountId account) {
  Transaction transaction(database_);
  auto session = issueSession(transaction, account);
  transaction.commit();
  return session;
}

std::optional<Session> Tokens::refresh(std::string_view refreshToken) {
  const auto print = fingerprint(refreshToken);
  Transaction transaction(database_);
  forgetStale(transaction);
  AccountId account = 0;
  {
    auto rows = transaction.query("SELECT account FROM tokens WHERE fingerprint = ? AND kind = ?",
                                  print, REFRESH);
    if (!rows.next()) return std::nullopt;
    account = rows.integer(0);
  }
  transaction.execute(
      "UPDATE tokens SET first_used_at = ? WHERE fingerprint = ? AND first_used_at IS NULL",
      stamp(clock_()), print);
  auto session = issueSession(transaction, account);
  transaction.commit();
  return session;
}

std::optional<AccountId> Tokens::accessAccount(std::string_view accessToken) {
  return accountOf(ACCESS, accessToken);
}

std::string Tokens::openPage(AccountId account) {
  Transaction transaction(database_);
  auto token = issue(transaction, PAGE, account, clock_() + PAGE_LIFETIME);
  transaction.commit();
  return token;
}

std::optional<AccountId> Tokens::pageAccount(std::string_view pageToken) {
  return accountOf(PAGE, pageToken);
}

void Tokens::closePage(std::string_view pageToken) {
  Transaction transaction(database_);
  transaction.execute("DELETE FROM tokens WHERE fingerprint = ? AND kind = ?",
                      fingerprint(pageToken), PAGE);
  transaction.commit();
}

std::string Tokens::issue(Transaction& transaction, std::string_view kind, AccountId account,
                          std::optional<Time> expires) {
  auto token = randomToken();
  const auto expiry = expires ? std::optional(stamp(*expires)) : std::nullopt;
  transaction.execute(
      "INSERT INTO tokens (fingerprint, kind, account, expires_at) VALUES (?, ?, ?, ?)",
      fingerprint(token), kind, account, expiry);
  return token;
}

Session Tokens::issueSession(Transaction& transaction, AccountId account) {
  const auto expiry = clock_() + accessLifetime_;
  return {.accessToken = issue(transaction, ACCESS, account, expiry),
          .refreshToken = issue(transaction, REFRESH, account, std::nullopt),
          .expiresAt = expiry};
}

void Tokens::forgetStale(Transaction& transaction) {
  const auto now = clock_();
  transaction.execute("DELETE FROM tokens WHERE expires_at <= ? OR first_used_at < ?", stamp(now),
                      stamp(now - REFRESH_GRACE));
}

std::optional<AccountId> Tokens::accountOf(std::string_view kind, std::string_view token) {
  Transaction transaction(database_);
  auto rows = transaction.query(
      "SELECT account FROM tokens WHERE fingerprint = ? AND kind = ? AND expires_at > ?",
      fingerprint(token), kind, stamp(clock_()));
  if (!rows.next()) return std::nullopt;
  return rows.integer(0);
}

}  // namespace notewick::service
