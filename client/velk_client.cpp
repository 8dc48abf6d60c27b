#include "client/velk_client.h"

#include <utility>

#include "client/base_url.h"
#include "client/json_map.h"
#include "platform/ports.h"

namespace notewick {
namespace {

using nlohmann::json;

constexpr double SESSION_TIMEOUT = 90.0;
constexpr double REQUEST_TIMEOUT = 60.0;
constexpr const char* AUTHORISATION_EXPIRED = "Authorisation expired — will retry";

std::unique_ptr<VELKClient> sharedClient;

}  // namespace

VELKClient& VELKClient::shared() {
  if (!sharedClient) sharedClient = std::make_unique<VELKClient>(ports());
  return *sharedClient;
}

void VELKClient::releaseShared() {
  sharedClient.reset();
}

VELKClient::VELKClient(const Ports& world)
    : clock_(world.clock),
      userDefaults_(world.userDefaults),
      keychain_(std::make_shared<Keychain>(world.secretStore)),
      session_(world.makeHttpSession({SESSION_TIMEOUT})) {}

HttpRequest VELKClient::makeRequest(const Call& call) {
  HttpRequest request{
      call.method,
      serviceURL(call.path),
      {{"Content-Type", "application/json"}, {"User-Agent", "velk-notewick/1.0 (macOS)"}},
      std::nullopt,
      REQUEST_TIMEOUT};
  if (call.body) request.body = call.body->dump(-1, ' ', false, json::error_handler_t::replace);
  return request;
}

void VELKClient::run(HttpRequest request, Completion<Answer> completion) {
  session_->send(std::move(request), [completion = std::move(completion)](auto response) {
    if (!response)
      return completion(tl::unexpected(VELKError::network(response.error().description)));
    if (!response->statusCode) return completion(tl::unexpected(VELKError::network("No response")));
    completion(Answer{*response->statusCode, parseMap(response->body.value_or(""))});
  });
}

void VELKClient::authed(Call call, Completion<json> completion) {
  ensureAccessToken([this, call = std::move(call),
                     completion = std::move(completion)](Result<std::string> token) {
    if (!token) return completion(tl::unexpected(token.error()));
    HttpRequest request = makeRequest(call);
    request.headers.emplace_back("Authorization", "Bearer " + *token);
    run(std::move(request), [this, completion](Result<Answer> answer) {
      completion(
          std::move(answer).and_then([this](Answer got) { return classify(std::move(got)); }));
    });
  });
}

Result<json> VELKClient::classify(Answer answer) {
  const auto code = answer.statusCode;
  const auto text = [&](const std::string& otherwise) {
    return textAt(answer.map, "error").value_or(otherwise + " (" + std::to_string(code) + ")");
  };
  if (code == 200) return std::move(answer.map);
  if (code == 401) {
    accessToken_.reset();
    return tl::unexpected(VELKError::network(AUTHORISATION_EXPIRED));
  }
  if (code == 429 || (code >= 500 && code <= 599)) {
    return tl::unexpected(VELKError::network(text("Server busy")));
  }
  return tl::unexpected(VELKError::api(text("Request failed")));
}

void VELKClient::fetchParticipants(Completion<std::vector<Participant>> completion) {
  authed({"/api/desktop/participants", "GET", std::nullopt},
         [this, userChanges = userChanges_, completion = std::move(completion)](Result<json> map) {
           if (map && userChanges != userChanges_) return completion(tl::unexpected(overtaken()));
           completion(std::move(map).and_then(participantsIn));
         });
}

VELKError VELKClient::overtaken() const {
  return isSignedIn() ? VELKError::network(AUTHORISATION_EXPIRED) : VELKError::notSignedIn();
}

void VELKClient::captureNote(const std::string& participantId, const std::string& input,
                             std::int64_t durationMinutes, const std::string& sessionDate,
                             Completion<std::optional<std::string>> completion) {
  json body = {{"participantId", participantId},
               {"input", input},
               {"durationMinutes", durationMinutes},
               {"sessionDate", sessionDate}};
  authed({"/api/desktop/case-notes/capture", "POST", std::move(body)},
         [completion = std::move(completion)](Result<json> map) {
           completion(
               std::move(map).map([](const json& answer) { return textAt(answer, "capturedId"); }));
         });
}

}  // namespace notewick
