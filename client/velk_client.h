#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "client/answer_body.h"
#include "client/keychain.h"
#include "client/lanes.h"
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
/// (`notSignedIn`, a locked store, an address that is not secure) may be delivered inside the call;
/// all else in a later turn.
///
/// At most six authorised calls are under way. The others wait for their turn, without limit of
/// time, and ask for their access token when it comes: however many notes wait, a stale token costs
/// no more refreshes than that.
///
/// A sign-out overtakes the calls of the session before it, and so does a new sign-in. Transport
/// failures and answers to captured notes, which the service has taken or refused, are then passed
/// on unchanged. Nothing else that comes is taken: it is delivered as a `network` error "Signed out
/// meanwhile", also to calls that still wait for their turn.
class VELKClient {
 public:
  /// The one client of the process, made on first use from the registered ports.
  [[nodiscard]] static VELKClient& shared();
  /// Lets go of the shared client, so that the next use makes one from the ports registered then.
  static void releaseShared();

  explicit VELKClient(const Ports& ports);

  /// Trades e-mail and password, sent as they stand, for tokens. Failures are `network` where no
  /// answer came, else `api`. Of two sign-ins under way the one that was started last counts.
  void login(const std::string& email, const std::string& password, Completion<void> completion);

  /// Forgets tokens and user; sends nothing.
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
    AnswerBody body;
  };
  struct Call {
    std::string path;
    std::string method;
    std::optional<nlohmann::json> body;
    bool outlivesSession = false;  ///< its answer counts after a sign-out, too
  };
  /// The user's commands to sign in and out, numbered in the order given.
  using UserCommand = std::uint64_t;

  [[nodiscard]] static HttpRequest makeRequest(const Call& call);
  void run(HttpRequest request, Completion<Answer> completion);
  void authed(Call call, Completion<AnswerBody> completion);
  void sendAuthed(const Call& call, Completion<AnswerBody> completion);
  [[nodiscard]] Completion<AnswerBody> leavingItsLane(Completion<AnswerBody> completion);
  [[nodiscard]] bool isOvertaken(UserCommand command) const { return command != standingCommand_; }
  void ensureAccessToken(Completion<std::string> completion);
  void refresh(const std::string& refreshToken, Completion<std::string> completion);
  [[nodiscard]] Result<std::string> refreshAnswered(const Answer& answer);
  [[nodiscard]] Result<void> loginAnswered(UserCommand command, const Answer& answer);
  /// The access token while it has more than a minute to live.
  [[nodiscard]] std::optional<std::string> freshToken() const;
  void storeSession(const std::string& access, const std::string& refresh,
                    std::optional<double> expiresAt);
  void forgetSession();

  Clock& clock_;
  UserDefaults& userDefaults_;
  std::shared_ptr<Keychain> keychain_;
  std::optional<std::string> accessToken_;
  std::optional<Date> accessTokenExpiry_;
  UserCommand lastCommand_ = 0;
  UserCommand standingCommand_ = 0;  ///< the one that made the state of now
  Lanes lanes_;
  std::unique_ptr<HttpSession> session_;
};

}  // namespace notewick
