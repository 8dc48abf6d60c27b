#include "tools/local-service/api.h"

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>
#include <utility>

#include "tools/local-service/secrets.h"

namespace notewick::service {
namespace {

using nlohmann::json;

constexpr int MINUTES_OF_A_DAY = 24 * 60;

/// Carries an answer out of the checks of a request.
struct Refusal {
  Answer answer;
};

json objectOf(const Request& request) {
  auto body = json::parse(request.body, nullptr, false);
  if (!body.is_object()) throw Refusal{errorAnswer(400, "The body must be a JSON object")};
  return body;
}

std::string textOf(const json& body, const char* key) {
  const auto found = body.find(key);
  if (found == body.end() || !found->is_string()) {
    throw Refusal{errorAnswer(400, std::string("\"") + key + "\" must be text")};
  }
  return found->get<std::string>();
}

bool isBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

int minutesOf(const json& body) {
  const auto found = body.find("durationMinutes");
  if (found != body.end() && found->is_number_integer() && *found >= 1 &&
      *found <= MINUTES_OF_A_DAY) {
    return found->get<int>();
  }
  throw Refusal{errorAnswer(400, "\"durationMinutes\" must be a whole number from 1 to 1440")};
}

bool isDate(std::string_view text) {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return false;
  const auto number = [&](std::size_t from, std::size_t length) {
    int value = -1;
    const auto* const first = text.data() + from;
    const bool digits =
        std::all_of(first, first + length, [](char c) { return c >= '0' && c <= '9'; });
    if (digits) std::from_chars(first, first + length, value);
    return value;
  };
  using namespace std::chrono;
  const int month = number(5, 2), day = number(8, 2);
  return number(0, 4) >= 0 && month >= 0 && day >= 0 &&
         year_month_day(year(number(0, 4)), std::chrono::month(static_cast<unsigned>(month)),
                        std::chrono::day(static_cast<unsigned>(day)))
             .ok();
}

Participant participantOf(const json& body, const Participants& participants) {
  const auto id = textOf(body, "participantId");
  const auto found = std::ranges::find(participants, id, &Participant::id);
  if (found == participants.end()) throw Refusal{errorAnswer(400, "Unknown participant")};
  return *found;
}

Note noteOf(const json& body, const Participants& participants) {
  Note note;
  note.participant = participantOf(body, participants);
  note.input = textOf(body, "input");
  note.minutes = minutesOf(body);
  note.sessionDate = textOf(body, "sessionDate");
  if (isBlank(note.input)) throw Refusal{errorAnswer(400, "\"input\" must not be blank")};
  if (!isDate(note.sessionDate)) {
    throw Refusal{errorAnswer(400, "\"sessionDate\" must be a date, yyyy-MM-dd")};
  }
  return note;
}

json sessionJson(const Session& session) {
  const auto expiry = std::chrono::floor<std::chrono::seconds>(session.expiresAt);
  return {{"accessToken", session.accessToken},
          {"refreshToken", session.refreshToken},
          {"expiresAt", expiry.time_since_epoch().count()}};
}

Handler refusing(Handler handler) {
  return [handler = std::move(handler)](const Request& request) {
    try {
      return handler(request);
    } catch (const Refusal& refusal) {
      return refusal.answer;
    }
  };
}

}  // namespace

Api::Api(Accounts& accounts, Notes& notes, Tokens& tokens, Clock clock)
    : accounts_(accounts), notes_(notes), tokens_(tokens), clock_(std::move(clock)) {}

void Api::addTo(Router& router) {
  const auto authorised = [this](auto operation) {
    return refusing([this, operation](const Request& request) {
      const auto account = bearer(request);
      return account ? operation(*account, request) : errorAnswer(401, "Not authorised");
    });
  };
  router.add("POST", "/api/desktop/auth/login",
             refusing([this](const Request& request) { return logIn(request); }));
  router.add("POST", "/api/desktop/auth/refresh",
             refusing([this](const Request& request) { return refresh(request); }));
  router.add(
      "GET", "/api/desktop/participants",
      authorised([this](AccountId account, const Request&) { return listParticipants(account); }));
  router.add("POST", "/api/desktop/case-notes/capture",
             authorised([this](AccountId account, const Request& request) {
               return captureNote(account, request);
             }));
}

Answer Api::logIn(const Request& request) {
  const auto body = objectOf(request);
  const auto account = accounts_.signIn(textOf(body, "email"), textOf(body, "password"));
  if (!account) return errorAnswer(401, "Invalid email or password");
  auto answer = sessionJson(tokens_.open(*account));
  answer["user"] = {{"email", accounts_.email(*account)}};
  return jsonAnswer(200, answer);
}

Answer Api::refresh(const Request& request) {
  const auto session = tokens_.refresh(textOf(objectOf(request), "refreshToken"));
  return session ? jsonAnswer(200, sessionJson(*session))
                 : errorAnswer(401, "Invalid refresh token");
}

Answer Api::listParticipants(AccountId account) {
  return jsonAnswer(200, {{"participants", participantsJson(accounts_.participants(account))}});
}

Answer Api::captureNote(AccountId account, const Request& request) {
  auto note = noteOf(objectOf(request), accounts_.participants(account));
  note.id = randomUuid();
  note.capturedAt = clock_();
  notes_.add(account, note);
  return jsonAnswer(200, {{"capturedId", note.id}});
}

std::optional<AccountId> Api::bearer(const Request& request) {
  constexpr std::string_view SCHEME = "Bearer ";
  const auto header = request.header("Authorization");
  if (!header.starts_with(SCHEME)) return std::nullopt;
  return tokens_.accessAccount(std::string_view(header).substr(SCHEME.size()));
}

}  // namespace notewick::service
