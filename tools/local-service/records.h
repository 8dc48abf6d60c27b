#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "tools/local-service/database.h"

namespace notewick::service {

/// An instant as the service reckons: milliseconds since 1970-01-01 UTC.
using Time = std::chrono::sys_time<std::chrono::milliseconds>;

/// Tells the present instant. Called from any thread. Decides expiry and dates notes; never a wait.
using Clock = std::function<Time()>;

using AccountId = std::int64_t;

/// What a client hands over.
struct Note {
  nlohmann::json participant;  // as the account has it
  std::string input;
  int minutes = 0;
  std::string sessionDate;  // yyyy-MM-dd
};

/// Everything the service remembers: who may sign in, each one's participants, the tokens, and the
/// captured notes. From any thread.
///
/// A refresh token is retired by nothing but being presented itself, and stays good for
/// REFRESH_GRACE after its first use: the client does not line up its refreshes, and whichever
/// answer comes last must leave it signed in.
class Records {
 public:
  static constexpr std::chrono::seconds ACCESS_LIFETIME{3600}, REFRESH_GRACE{60};

  /// file: or ":memory:".
  Records(const std::string& file, Clock clock);

  /// Makes the account, without participants, or gives the existing one the new password. Case of
  /// the e-mail's ASCII letters does not tell two accounts apart; the first spelling is kept.
  AccountId saveAccount(const std::string& email, const std::string& password);

  /// Participants are kept as the service sends them: [{"id", "first_name", "last_name"}, ...]
  void saveParticipants(AccountId account, const nlohmann::json& participants);

  /// The account with that e-mail and password.
  [[nodiscard]] std::optional<AccountId> signIn(const std::string& email,
                                                const std::string& password);

  /// Of an existing account.
  [[nodiscard]] std::string email(AccountId account);
  [[nodiscard]] nlohmann::json participants(AccountId account);

  /// A new pair of tokens as clients get it: {"accessToken", "refreshToken", "expiresAt"}, the
  /// expiry of the access token in whole seconds since 1970.
  [[nodiscard]] nlohmann::json openSession(AccountId account);

  /// A new pair for a good refresh token; nothing for an unknown or a retired one.
  [[nodiscard]] std::optional<nlohmann::json> refreshSession(const std::string& refreshToken);

  /// Whose access token this is, until it expires.
  [[nodiscard]] std::optional<AccountId> accountOf(const std::string& accessToken);

  /// The same note added twice is kept twice. Returns the new one's id.
  std::string addNote(AccountId account, const Note& note);

  /// [{"id", "participantId", "participantName", "input", "durationMinutes", "sessionDate",
  /// "capturedAt"}, ...], the name as it was at capture, the time in seconds since 1970: everyone's
  /// in the order of capture, or those of one account, the last captured first.
  [[nodiscard]] nlohmann::json notes();
  [[nodiscard]] nlohmann::json newestNotes(AccountId account);

 private:
  std::string issueToken(AccountId account, const char* kind, const nlohmann::json& expiry);

  Database database_;
  Clock clock_;
};

}  // namespace notewick::service
