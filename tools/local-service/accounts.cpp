#include "tools/local-service/accounts.h"

#include <nlohmann/json.hpp>

#include "tools/local-service/secrets.h"

namespace notewick::service {

Accounts::Accounts(Database& database)
    : database_(database), nobodysHash_(hashPassword(randomToken())) {
  Transaction transaction(database_);
  transaction.execute(
      "CREATE TABLE IF NOT EXISTS accounts (id INTEGER PRIMARY KEY, "
      "email TEXT NOT NULL UNIQUE COLLATE NOCASE, password_hash TEXT NOT NULL, "
      "participants TEXT NOT NULL DEFAULT '[]')");
  transaction.commit();
}

AccountId Accounts::save(std::string_view email, std::string_view password) {
  const auto hash = hashPassword(password);
  Transaction transaction(database_);
  transaction.execute(
      "INSERT INTO accounts (email, password_hash) VALUES (?, ?) "
      "ON CONFLICT (email) DO UPDATE SET password_hash = excluded.password_hash",
      email, hash);
  AccountId account = 0;
  {
    auto rows = transaction.query("SELECT id FROM accounts WHERE email = ?", email);
    if (rows.next()) account = rows.integer(0);
  }
  transaction.commit();
  return account;
}

void Accounts::saveParticipants(AccountId account, const Participants& participants) {
  Transaction transaction(database_);
  transaction.execute("UPDATE accounts SET participants = ? WHERE id = ?",
                      participantsJson(participants).dump(), account);
  transaction.commit();
}

std::optional<AccountId> Accounts::find(std::string_view email) {
  Transaction transaction(database_);
  auto rows = transaction.query("SELECT id FROM accounts WHERE email = ?", email);
  if (!rows.next()) return std::nullopt;
  return rows.integer(0);
}

std::optional<AccountId> Accounts::signIn(std::string_view email, std::string_view password) {
  std::optional<AccountId> account;
  auto hash = nobodysHash_;
  {
    Transaction transaction(database_);
    auto rows = transaction.query("SELECT id, password_hash FROM accounts WHERE email = ?", email);
    if (rows.next()) {
      account = rows.integer(0);
      hash = rows.text(1);
    }
  }
  return passwordMatches(password, hash) ? account : std::nullopt;
}

std::string Accounts::email(AccountId account) {
  Transaction transaction(database_);
  auto rows = transaction.query("SELECT email FROM accounts WHERE id = ?", account);
  return rows.next() ? rows.text(0) : std::string{};
}

Participants Accounts::participants(AccountId account) {
  Transaction transaction(database_);
  auto rows = transaction.query("SELECT participants FROM accounts WHERE id = ?", account);
  return rows.next() ? participantsFromJson(nlohmann::json::parse(rows.text(0))) : Participants{};
}

}  // namespace notewick::service
