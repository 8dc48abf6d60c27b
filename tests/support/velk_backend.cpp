#include "tests/support/velk_backend.h"

#include <algorithm>

namespace notewick {
namespace {

using nlohmann::json;

HttpResponse jsonAnswer(int status, const json& body) {
  return {status, body.dump()};
}

}  // namespace

std::optional<std::string> ReceivedRequest::header(std::string_view name) const {
  const auto found =
      std::ranges::find(headers, name, [](const auto& entry) { return entry.first; });
  return found == headers.end() ? std::nullopt : std::optional(found->second);
}

json ReceivedRequest::json() const {
  return nlohmann::json::parse(body.value_or(""), nullptr, false);
}

HttpResponse VelkBackend::handle(const ReceivedRequest& request) {
  if (request.path.ends_with(LOGIN_PATH)) return login(request);
  if (request.path.ends_with(REFRESH_PATH)) return refresh(request);
  if (!isAuthorised(request)) return jsonAnswer(401, {{"error", "Unauthorised"}});
  if (request.path.ends_with(PARTICIPANTS_PATH)) return listParticipants();
  if (request.path.ends_with(CAPTURE_PATH)) return capture(request);
  return jsonAnswer(404, {{"error", "Not found"}});
}

std::string VelkBackend::issueRefreshToken() {
  const auto token = "refresh-" + std::to_string(++issued_);
  refreshTokens_.insert(token);
  return token;
}

void VelkBackend::revokeTokens() {
  accessTokens_.clear();
  refreshTokens_.clear();
}

HttpResponse VelkBackend::login(const ReceivedRequest& request) {
  const auto sent = request.json();
  if (!sent.is_object() || sent.value("email", "") != email ||
      sent.value("password", "") != password)
    return jsonAnswer(401, {{"error", "Invalid email or password"}});
  auto answer = issueTokens();
  answer["user"] = {{"email", email}};
  return jsonAnswer(200, answer);
}

HttpResponse VelkBackend::refresh(const ReceivedRequest& request) {
  const auto sent = request.json();
  const auto token = sent.is_object() ? sent.value("refreshToken", "") : "";
  if (!refreshTokens_.contains(token))
    return jsonAnswer(401, {{"error", "Refresh token not accepted"}});
  return jsonAnswer(200, issueTokens());
}

HttpResponse VelkBackend::listParticipants() const {
  auto list = json::array();
  for (const auto& participant : participants)
    list.push_back({{"id", participant.id},
                    {"first_name", participant.firstName},
                    {"last_name", participant.lastName}});
  return jsonAnswer(200, {{"participants", list}});
}

HttpResponse VelkBackend::capture(const ReceivedRequest& request) {
  notes.push_back(request.json());
  return jsonAnswer(200, {{"capturedId", "note-" + std::to_string(notes.size())}});
}

bool VelkBackend::isAuthorised(const ReceivedRequest& request) const {
  const auto header = request.header("Authorization").value_or("");
  if (!header.starts_with("Bearer ")) return false;
  const auto token = accessTokens_.find(header.substr(7));
  return token != accessTokens_.end() && clock_.now() < token->second;
}

json VelkBackend::issueTokens() {
  const auto refreshToken = issueRefreshToken();
  const auto accessToken = "access-" + std::to_string(issued_);
  const auto expiry = clock_.now() + Date(tokenLifetime);
  accessTokens_[accessToken] = expiry;
  return {{"accessToken", accessToken},
          {"refreshToken", refreshToken},
          {"expiresAt", expiry.count() + SECONDS_FROM_1970_TO_2001}};
}

}  // namespace notewick
