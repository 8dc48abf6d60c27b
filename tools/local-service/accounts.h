#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tools/local-service/database.h"
#include "tools/local-service/participants.h"

namespace notewick::service {

using AccountId = std::int64_t;

/// Who may sign in, and each one's participants.
class Accounts {
 public:
  explicit Accounts(Database& database);

  /// Makes the account, or gives the existing one the new password. Case of the e-mail's ASCII
  /// letters does not tell two accounts apart; the first spelling is kept.
  AccountId save(std::string_view email, std::string_view password);

  void saveParticipants(AccountId account, const Participants& participants);

  [[nodiscard]] std::optional<AccountId> find(std::string_view email);

  /// The account with that e-mail and password. Takes as long for an unknown e-mail as for a wrong
  /// password.
  [[nodiscard]] std::optional<AccountId> signIn(std::string_view email, std::string_view password);

  /// Of an existing account.
  [[nodiscard]] std::string email(AccountId account);
  [[nodiscard]] Participants participants(AccountId account);

 private:
  Database& database_;
  std::string nobodysHash_;  // checked in place of an unknown account's
};

}  // namespace notewick::service
