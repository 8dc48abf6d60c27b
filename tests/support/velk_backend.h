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
  Date at;

  [[nodiscard]] std::optional<std::string> header(std::string_view name) const;
  /// The body as JSON; discarded when there is none or it is none.
  [[nodiscard]] nlohmann::json json() const;
};

/// The service itself, in small: one account, access tokens that expire, notes it keeps.
class VelkBackend {
 public:
  explicit VelkBackend(FakeClock& clock) : clock_(clock) {}

  [[nodiscard]] HttpResponse handle(const ReceivedRequest& request);

  /// A refresh token that the service accepts, as from an earlier sign-in.
  [[nodiscard]] std::string issueRefreshToken();
  /// The service takes no token any longer.
  void revokeTokens();

  std::string email = "ada@velk.example";
  std::string password = "correct horse";
  std::vector<Participant> participants;
  std::vector<nlohmann::json> notes;  ///< captured, in order
  double tokenLifetime = 3600;        ///< seconds an access token is good for

 private:
  [[nodiscard]] HttpResponse login(const ReceivedRequest& request);
  [[nodiscard]] HttpResponse refresh(const ReceivedRequest& request);
  [[nodiscard]] HttpResponse listParticipants() const;
  [[nodiscard]] HttpResponse capture(const ReceivedRequest& request);
  [[nodiscard]] bool isAuthorised(const ReceivedRequest& request) const;
  [[nodiscard]] nlohmann::json issueTokens();

  FakeClock& clock_;
  int issued_ = 0;
  std::map<std::string, Date> accessTokens_;  ///< with their expiry
  std::set<std::string> refreshTokens_;
};

}  // namespace notewick
