#include "client/velk_client.h"

#include <utility>

#include "app/constants.h"
#include "client/base_url.h"
#include "client/failure_text.h"
#include "platform/ports.h"
#include "platform/web_address.h"

namespace notewick {
namespace {

using nlohmann::json;

constexpr double SESSION_TIMEOUT = 90.0;
constexpr double REQUEST_TIMEOUT = 60.0;
constexpr int MOST_UNDER_WAY = 6;
constexpr const char* NOT_SECURE = "The address is not secure.";

std::unique_ptr<VELKClient> sharedClient;

Result<std::vector<Participant>> participantsIn(AnswerBody body) {
  if (!body.participants) return tl::unexpected(VELKError::api("Malformed participants response"));
  return std::move(*body.participants);
}

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
      keychain_(Keychain::create(world.secretStore)),
      lanes_(world.mainLoop, MOST_UNDER_WAY),
      session_(world.makeHttpSession({SESSION_TIMEOUT})) {}

HttpRequest VELKClient::makeRequest(const Call& call) {
  HttpRequest request{
      call.method,
      serviceURL(call.path),
      {{"Content-Type", "application/json"}, {"User-Agent", std::string(USER_AGENT)}},
      std::nullopt,
      REQUEST_TIMEOUT};
  if (call.body) request.body = call.body->dump(-1, ' ', false, json::error_handler_t::replace);
  return request;
}

void VELKClient::run(HttpRequest request, Completion<Answer> completion) {
  if (!isSecureAddress(request.url)) {
    return completion(tl::unexpected(VELKError::network(NOT_SECURE)));
  }
  session_->send(std::move(request), [completion = std::move(completion)](auto response) {
    if (!response)
      return completion(tl::unexpected(VELKError::network(response.error().description)));
    if (!response->statusCode) return completion(tl::unexpected(VELKError::network("No response")));
    completion(Answer{*response->statusCode, readAnswer(std::move(response->body).value_or(""))});
  });
}

void VELKClient::authed(Call call, Completion<AnswerBody> completion) {
  lanes_.enter([this, command = standingCommand_, call = std::move(call),
                completion = leavingItsLane(std::move(completion))] {
    if (isOvertaken(command)) return completion(tl::unexpected(VELKError::overtaken()));
    sendAuthed(call, completion);
  });
}

Completion<AnswerBody> VELKClient::leavingItsLane(Completion<AnswerBody> completion) {
  return [this, completion = std::move(completion)](Result<AnswerBody> result) {
    lanes_.leave();
    completion(std::move(result));
  };
}

void VELKClient::sendAuthed(const Call& call, Completion<AnswerBody> completion) {
  ensureAccessToken([this, call, command = standingCommand_,
                     completion = std::move(completion)](Result<std::string> token) {
    if (!token) return completion(tl::unexpected(token.error()));
    HttpRequest request = makeRequest(call);
    request.headers.emplace_back("Authorization", "Bearer " + *token);
    run(std::move(request),
        [this, command, isTaken = call.outlivesSession, completion](Result<Answer> answer) {
          if (!answer) return completion(tl::unexpected(answer.error()));
          const bool overtaken = isOvertaken(command);
          if (overtaken && !isTaken) return completion(tl::unexpected(VELKError::overtaken()));
          if (answer->statusCode == 401 && !overtaken) accessToken_.reset();
          completion(resultOf(answer->statusCode, std::move(answer->body)));
        });
  });
}

void VELKClient::fetchParticipants(Completion<std::vector<Participant>> completion) {
  authed({"/api/desktop/participants", "GET", std::nullopt},
         [completion = std::move(completion)](Result<AnswerBody> answer) {
           completion(std::move(answer).and_then(participantsIn));
         });
}

void VELKClient::captureNote(const std::string& participantId, const std::string& input,
                             std::int64_t durationMinutes, const std::string& sessionDate,
                             Completion<std::optional<std::string>> completion) {
  json body = {{"participantId", participantId},
               {"input", input},
               {"durationMinutes", durationMinutes},
               {"sessionDate", sessionDate}};
  authed({.path = "/api/desktop/case-notes/capture",
          .method = "POST",
          .body = std::move(body),
          .outlivesSession = true},
         [completion = std::move(completion)](Result<AnswerBody> answer) {
           completion(std::move(answer).map(&AnswerBody::capturedId));
         });
}

}  // namespace notewick
