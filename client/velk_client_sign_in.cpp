#include <utility>

#include "client/failure_text.h"
#include "client/velk_client.h"
#include "platform/clock.h"
#include "platform/user_defaults.h"

namespace notewick {
namespace {

using nlohmann::json;

constexpr Date DEFAULT_LIFETIME(3000.0);
constexpr Date LEAST_REMAINING_LIFETIME(60.0);
constexpr const char* EMAIL_KEY = "VELKUserEmail";

struct TokenPair {
  std::string access;
  std::string refresh;
  std::optional<double> expiresAt;
};

std::optional<TokenPair> tokensIn(int statusCode, const AnswerBody& body) {
  if (statusCode != 200 || !body.accessToken || !body.refreshToken) return std::nullopt;
  return TokenPair{*body.accessToken, *body.refreshToken, body.expiresAt};
}

VELKError signInFailure(int statusCode, const AnswerBody& body) {
  std::string text = failureText(body, "Sign-in failed", statusCode);
  return blamesCredentials(body) ? VELKError::wrongCredentials(std::move(text))
                                 : VELKError::api(std::move(text));
}

}  // namespace

std::optional<std::string> VELKClient::userEmail() const {
  return userDefaults_.string(EMAIL_KEY);
}

void VELKClient::setUserEmail(const std::optional<std::string>& email) {
  if (email) {
    userDefaults_.setString(EMAIL_KEY, *email);
  } else {
    userDefaults_.remove(EMAIL_KEY);
  }
}

void VELKClient::login(const std::string& email, const std::string& password,
                       Completion<void> completion) {
  const Call call{"/api/desktop/auth/login", "POST",
                  json{{"email", email}, {"password", password}}};
  run(makeRequest(call),
      [this, command = ++lastCommand_, completion = std::move(completion)](Result<Answer> answer) {
        completion(answer.and_then([&](const Answer& got) { return loginAnswered(command, got); }));
      });
}

Result<void> VELKClient::loginAnswered(UserCommand command, const Answer& answer) {
  if (command < standingCommand_) return tl::unexpected(VELKError::overtaken());
  const auto tokens = tokensIn(answer.statusCode, answer.body);
  if (!tokens) return tl::unexpected(signInFailure(answer.statusCode, answer.body));
  standingCommand_ = command;
  storeSession(tokens->access, tokens->refresh, tokens->expiresAt);
  if (answer.body.user) setUserEmail(answer.body.user->email);
  lanes_.hurry();
  return {};
}

void VELKClient::signOut() {
  standingCommand_ = ++lastCommand_;
  forgetSession();
  lanes_.hurry();
}

void VELKClient::forgetSession() {
  accessToken_.reset();
  accessTokenExpiry_.reset();
  setUserEmail(std::nullopt);
  keychain_->keychainDelete();
}

std::optional<std::string> VELKClient::freshToken() const {
  const bool fresh =
      accessTokenExpiry_ && *accessTokenExpiry_ - clock_.now() > LEAST_REMAINING_LIFETIME;
  return fresh ? accessToken_ : std::nullopt;
}

void VELKClient::ensureAccessToken(Completion<std::string> completion) {
  if (const auto token = freshToken()) return completion(*token);
  const auto refreshToken = keychain_->keychainLoad();
  if (refreshToken) return refresh(*refreshToken, std::move(completion));
  completion(tl::unexpected(keychain_->isLocked()
                                ? VELKError::network("The password store is locked")
                                : VELKError::notSignedIn()));
}

void VELKClient::refresh(const std::string& refreshToken, Completion<std::string> completion) {
  const Call call{"/api/desktop/auth/refresh", "POST", json{{"refreshToken", refreshToken}}};
  run(makeRequest(call), [this, command = standingCommand_,
                          completion = std::move(completion)](Result<Answer> answer) {
    if (answer && isOvertaken(command)) {
      return completion(tl::unexpected(VELKError::overtaken()));
    }
    completion(answer.and_then([this](const Answer& got) { return refreshAnswered(got); }));
  });
}

Result<std::string> VELKClient::refreshAnswered(const Answer& answer) {
  const auto tokens = tokensIn(answer.statusCode, answer.body);
  if (tokens) {
    storeSession(tokens->access, tokens->refresh, tokens->expiresAt);
    return tokens->access;
  }
  if (answer.statusCode == 401) {
    forgetSession();
    return tl::unexpected(VELKError::sessionExpired());
  }
  return tl::unexpected(
      VELKError::network(failureText(answer.body, "Refresh failed", answer.statusCode)));
}

void VELKClient::storeSession(const std::string& access, const std::string& refresh,
                              std::optional<double> expiresAt) {
  accessToken_.emplace(access);
  accessTokenExpiry_ =
      expiresAt ? Date(*expiresAt - SECONDS_FROM_1970_TO_2001) : clock_.now() + DEFAULT_LIFETIME;
  keychain_->keychainSave(refresh);
}

}  // namespace notewick
