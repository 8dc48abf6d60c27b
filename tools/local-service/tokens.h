#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "tools/local-service/accounts.h"
#include "tools/local-service/clock.h"
#include "tools/local-service/database.h"

namespace notewick::service {

/// What a client holds after signing in or refreshing.
struct Session {
  std::string accessToken;
  std::string refreshToken;
  Time expiresAt;  // of the access token
};

/// Issues and checks the random tokens; the database holds their fingerprints only.
///
/// A refresh token is retired by nothing but being presented itself, and stays good for
/// REFRESH_GRACE after its first use: the client does not line up its refreshes, and whichever
/// answer comes last must leave it signed in.
class Tokens {
 public:
  static constexpr std::chrono::seconds REFRESH_GRACE{60};
  static constexpr std::chrono::hours PAGE_LIFETIME{12};

  Tokens(Database& database, Clock clock, std::chrono::seconds accessLifetime);

  [[nodiscard]] Session open(AccountId account);

  /// A new pair for a good refresh token; nothing for an unknown or a retired one.
  [[nodiscard]] std::optional<Session> refresh(std::string_view refreshToken);

  /// Whose access token this is, until it expires.
  [[nodiscard]] std::optional<AccountId> accessAccount(std::string_view accessToken);

  /// The token of a signed-in browser, for its cookie.
  [[nodiscard]] std::string openPage(AccountId account);
  [[nodiscard]] std::optional<AccountId> pageAccount(std::string_view pageToken);
  void closePage(std::string_view pageToken);

 private:
  std::string issue(Transaction& transaction, std::string_view kind, AccountId account,
                    std::optional<Time> expires);
  Session issueSession(Transaction& transaction, AccountId account);
  void forgetStale(Transaction& transaction);
  std::optional<AccountId> accountOf(std::string_view kind, std::string_view token);

  Database& database_;
  Clock clock_;
  std::chrono::seconds accessLifetime_;
};

}  // namespace notewick::service
