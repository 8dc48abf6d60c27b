#include <ctime>

#include "tools/local-service/endpoints.h"

namespace notewick::service {
namespace {

using httplib::Request;
using nlohmann::json;

json participantOf(const json& body, const json& participants) {
  const std::string id = body.at("participantId");
  for (const auto& participant : participants) {
    if (participant.at("id") == id) return participant;
  }
  throw Refusal(400, "Unknown participant");
}

std::string inputOf(const json& body) {
  std::string input = body.at("input");
  if (input.find_first_not_of(" \t\r\n") == input.npos) {
    throw Refusal(400, "\"input\" must not be blank");
  }
  return input;
}

int minutesOf(const json& body) {
  const auto& minutes = body.at("durationMinutes");
  if (!minutes.is_number_integer() || minutes < 1 || minutes > 24 * 60) {
    throw Refusal(400, "\"durationMinutes\" must be a whole number from 1 to 1440");
  }
  return minutes;
}

std::string dateOf(const json& body) {
  std::string date = body.at("sessionDate");
  std::tm day{};
  char written[16] = "";
  if (strptime(date.c_str(), "%Y-%m-%d", &day)) {
    timegm(&day);  // makes the 30th of February the 2nd of March
    std::strftime(written, sizeof written, "%Y-%m-%d", &day);
  }
  if (date != written) throw Refusal(400, "\"sessionDate\" must be a date, yyyy-MM-dd");
  return date;
}

AccountId bearer(Records& records, const Request& request) {
  const std::string scheme = "Bearer ";
  const auto header = request.get_header_value("Authorization");
  const auto account =
      header.starts_with(scheme) ? records.accountOf(header.substr(scheme.size())) : std::nullopt;
  if (!account) throw Refusal(401, "Not authorised");
  return *account;
}

json logIn(Records& records, const Request& request) {
  const auto body = json::parse(request.body);
  const auto account = records.signIn(body.at("email"), body.at("password"));
  if (!account) throw Refusal(401, "Invalid email or password");
  auto answer = records.openSession(*account);
  answer["user"] = {{"email", records.email(*account)}};
  return answer;
}

json refresh(Records& records, const Request& request) {
  auto session = records.refreshSession(json::parse(request.body).at("refreshToken"));
  if (!session) throw Refusal(401, "Invalid refresh token");
  return *std::move(session);
}

json listParticipants(Records& records, const Request& request) {
  return {{"participants", records.participants(bearer(records, request))}};
}

json captureNote(Records& records, const Request& request) {
  const auto account = bearer(records, request);
  const auto body = json::parse(request.body);
  const Note note{.participant = participantOf(body, records.participants(account)),
                  .input = inputOf(body),
                  .minutes = minutesOf(body),
                  .sessionDate = dateOf(body)};
  return {{"capturedId", records.addNote(account, note)}};
}

}  // namespace

Routes apiRoutes(Records& records) {
  const auto with = [&records](json (*operation)(Records&, const Request&)) {
    return answeringJson(
        [&records, operation](const Request& request) { return operation(records, request); });
  };
  return {{"POST", "/api/desktop/auth/login", with(logIn)},
          {"POST", "/api/desktop/auth/refresh", with(refresh)},
          {"GET", "/api/desktop/participants", with(listParticipants)},
          {"POST", "/api/desktop/case-notes/capture", with(captureNote)}};
}

}  // namespace notewick::service
