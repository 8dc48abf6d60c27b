#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "client/keychain.h"
#include "client/velk_error.h"
#include "model/date.h"
#include "model/records.h"
#include "platform/http_session.h"

namespace notewick {

class Clock;
class UserDefaults;
struct Ports;

template <class T>
using Completion = std::function<void(Result<T>)>;

/// The client of the service's JSON interface (docs/service.md). Main thread only; every completion
/// runs there, exactly once, and never after the client is gone. A failure that needs no request
/// (`notSignedIn`, a locked store) is delivered inside the call; all else in a later turn.
class VELKClient {
 public:
  /// The one client of the process, made on first use from the registered ports.
  [[nodiscard]] static VELKClient& shared();
  /// Lets go of the shared client, so that the next use makes one from the ports registered then.
  static void releaseShared();

  explicit VELKClient(const Ports& ports);

  /// Trades e-mail and password, sent as they stand, for tokens. Failures are `network` where no
  /// answer came, else `api`. What calls under way still bring of an earlier session is not taken,
  /// as after `signOut`.
  void login(const std::string& email, const std::string& password, Completion<void> completion);

  /// Forgets tokens and user, as the user wished; sends nothing. Tokens and participants that a
  /// call under way still brings are not taken: its caller gets `notSignedIn`, or a `network` error
  /// where the user has signed in anew by then.
  void signOut();

  /// True exactly when there is a refresh token.
  [[nodiscard]] bool isSignedIn() const { return keychain_->holdsToken(); }

  /// The e-mail of the signed-in user as the service reported it.
  [[nodiscard]] std::optional<std::string> userEmail() const;
  void setUserEmail(const std::optional<std::string>& email);

  /// The user's participants in the service's order; entries without the three texts are skipped.
  void fetchParticipants(Completion<std::vector<Participant>> completion);

  /// Hands over a confirmed note; delivers the id the service gave it, if any.
  void captureNote(const std::string& participantId, const std::string& input,
                   std::int64_t durationMinutes, const std::string& sessionDate,
                   Completion<std::optional<std::string>> completion);

  [[nodiscard]] Keychain& keychain() { return *keychain_; }

 private:
  struct Answer {
    int statusCode;
    nlohmann::json map;  ///< always an object
  };
  struct Call {
    std::string path;
    std::string method;
    std::optional<nlohmann::json> body;
  };

  [[nodiscard]] static HttpRequest makeRequest(const Call& call);
  void run(HttpRequest request, Completion<Answer> completion);
  void authed(Call call, Completion<nlohmann::json> completion);
  [[nodiscard]] Result<nlohmann::json> classify(Answer answer);
  void ensureAccessToken(Completion<std::string> completion);
  void refresh(const std::string& refreshToken, Completion<std::string> completion);
  [[nodiscard]] Result<std::string> refreshAnswered(const Answer& answer);
  /// Why what a call brought from before a sign-out is not taken.
  [[nodiscard]] VELKError overtaken() const;
  [[nodiscard]] Result<void> loginAnswered(const Answer& answer);
  /// The access token while it has more than a minute to live.
  [[nodiscard]] std::optional<std::string> freshToken() const;
  void storeSession(const std::string& access, const std::string& refresh,
                    const nlohmann::json& expiresAt);
  void forgetSession();

  Clock& clock_;
  UserDefaults& userDefaults_;
  std::shared_ptr<Keychain> keychain_;
  std::optional<std::string> accessToken_;
  std::optional<Date> accessTokenExpiry_;
  std::uint64_t userChanges_ = 0;  ///< how often the user signed in or out
  std::unique_ptr<HttpSession> session_;
};

}  // namespace notewick
