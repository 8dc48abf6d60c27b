#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/records.h"
#include "platform/http_session.h"
#include "tests/support/fake_clock.h"

namespace notewick {

inline constexpr std::string_view LOGIN_PATH = "/api/desktop/auth/login";
inline constexpr std::string_view REFRESH_PATH = "/api/desktop/auth/refresh";
inline constexpr std::string_view PARTICIPANTS_PATH = "/api/desktop/participants";
inline constexpr std::string_view CAPTURE_PATH = "/api/desktop/case-notes/capture";

/// A request as the service received it.
struct ReceivedRequest {
  std::string method;
  std::string path;  ///< from the first "/" after the authority
  std::string url;
  std::vector<std::pair<std::string, std::string>> headers;
  std::optional<std::string> body;
  double timeout;

  [[nodiscard]] std::string authorization() const {
    for (const auto& [name, value] : headers)
      if (name == "Authorization") return value;
    return "none";
  }
  /// The body as JSON; discarded when there is none or it is none.
  [[nodiscard]] nlohmann::json json() const {
    return nlohmann::json::parse(body.value_or(""), nullptr, false);
  }
};

/// The service itself, in small: one account, access tokens that expire, notes it keeps.
class VelkBackend {
 public:
  explicit VelkBackend(FakeClock& clock) : clock_(clock) {}

  [[nodiscard]] HttpResponse handle(const ReceivedRequest& request) {
    if (request.path.ends_with(LOGIN_PATH)) return login(request);
    if (request.path.ends_with(REFRESH_PATH)) return refresh(request);
    if (!isAuthorised(request)) return refusal("Unauthorised");
    if (request.path.ends_with(PARTICIPANTS_PATH)) return listParticipants();
    notes.push_back(request.json());
    return taken({{"capturedId", "note-" + std::to_string(notes.size())}});
  }

  /// A refresh token that the service accepts, as from an earlier sign-in.
  [[nodiscard]] std::string issueRefreshToken() {
    return *refreshTokens_.insert("refresh-" + std::to_string(++issued_)).first;
  }
  /// The service takes no token any longer.
  void revokeTokens() {
    accessTokens_.clear();
    refreshTokens_.clear();
  }

  std::string email = "ada@velk.example";
  std::string password = "correct horse";
  std::vector<Participant> participants;
  std::vector<nlohmann::json> notes;  ///< captured, in order
  double tokenLifetime = 3600;        ///< seconds an access token is good for

 private:
  static HttpResponse taken(const nlohmann::json& body) { return {200, body.dump()}; }
  static HttpResponse refusal(const std::string& reason) {
    return {401, nlohmann::json({{"error", reason}}).dump()};
  }

  [[nodiscard]] HttpResponse login(const ReceivedRequest& request) {
    if (request.json() != nlohmann::json({{"email", email}, {"password", password}}))
      return refusal("Invalid email or password");
    auto answer = issueTokens();
    answer["user"] = {{"email", email}};
    return taken(answer);
  }

  [[nodiscard]] HttpResponse refresh(const ReceivedRequest& request) {
    const bool known = refreshTokens_.contains(request.json().at("refreshToken"));
    return known ? taken(issueTokens()) : refusal("Refresh token not accepted");
  }

  [[nodiscard]] HttpResponse listParticipants() const {
    auto list = nlohmann::json::array();
    for (const auto& [id, first, last] : participants)
      list.push_back({{"id", id}, {"first_name", first}, {"last_name", last}});
    return taken({{"participants", list}});
  }

  [[nodiscard]] bool isAuthorised(const ReceivedRequest& request) const {
    const auto token = accessTokens_.find(request.authorization());
    return token != accessTokens_.end() && clock_.now() < token->second;
  }

  [[nodiscard]] nlohmann::json issueTokens() {
    const auto refreshToken = issueRefreshToken();
    const auto accessToken = "access-" + std::to_string(issued_);
    const auto expiry = clock_.now() + Date(tokenLifetime);
    accessTokens_["Bearer " + accessToken] = expiry;
    return {{"accessToken", accessToken},
            {"refreshToken", refreshToken},
            {"expiresAt", expiry.count() + SECONDS_FROM_1970_TO_2001}};
  }

  FakeClock& clock_;
  int issued_ = 0;
  std::map<std::string, Date> accessTokens_;  ///< as a request carries them, with their expiry
  std::set<std::string> refreshTokens_;
};

}  // namespace notewick
