#include <ctime>
#include <map>
#include <regex>

#include "assets.h"
#include "tools/local-service/endpoints.h"

namespace notewick::service {
namespace {

using httplib::Request;
using httplib::Response;
using nlohmann::json;
using Values = std::map<std::string, std::string>;

const std::string COOKIE = "notewick_session=";

/// Everything escaped that HTML could read as markup, in content and in quoted attributes.
std::string escaped(const std::string& text) {
  static const std::map<char, std::string> entities = {
      {'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\'', "&#39;"}};
  std::string html;
  for (const char letter : text) {
    const auto entity = entities.find(letter);
    html += entity == entities.end() ? std::string(1, letter) : entity->second;
  }
  return html;
}

/// The form with the values in their places: escaped for {{name}}, as they are for {{{name}}}.
std::string filled(const std::string& form, const Values& values) {
  static const std::regex place("\\{\\{(\\{?)(\\w+)\\}?\\}\\}");
  std::string text;
  auto rest = form.begin();
  for (std::sregex_iterator found(form.begin(), form.end(), place), end; found != end; ++found) {
    const auto& value = values.at((*found)[2]);
    text.append(rest, (*found)[0].first).append((*found)[1].length() ? value : escaped(value));
    rest = (*found)[0].second;
  }
  return text.append(rest, form.end());
}

std::string written(const std::tm& time, const char* form) {
  char text[64];
  return {text, std::strftime(text, sizeof text, form, &time)};
}

/// "2026-03-05" as "5 March 2026".
std::string readableDate(const std::string& date) {
  std::tm day{};
  strptime(date.c_str(), "%Y-%m-%d", &day);
  return written(day, "%-d %B %Y");
}

/// Seconds since 1970 in the machine's time zone, as "5 March 2026, 14:07".
std::string readableTime(double time) {
  const auto seconds = static_cast<std::time_t>(time);
  std::tm local{};
  localtime_r(&seconds, &local);
  return written(local, "%-d %B %Y, %H:%M");
}

void answerPage(Response& response, const std::string& title, const std::string& content) {
  response.set_header("Cache-Control", "no-store");
  response.set_header("Content-Security-Policy",
                      "default-src 'none'; style-src 'unsafe-inline'; form-action 'self'; "
                      "frame-ancestors 'none'; base-uri 'none'");
  const Values values = {{"title", title}, {"style", assets::STYLE}, {"content", content}};
  response.set_content(filled(assets::PAGE, values), "text/html; charset=utf-8");
}

std::string article(const json& note) {
  return filled(assets::NOTE, {{"participantName", note.at("participantName")},
                               {"sessionDate", note.at("sessionDate")},
                               {"date", readableDate(note.at("sessionDate"))},
                               {"minutes", note.at("durationMinutes").dump()},
                               {"input", note.at("input")},
                               {"captured", readableTime(note.at("capturedAt"))}});
}

/// The access token in the browser's cookie, empty without one.
std::string tokenOf(const Request& request) {
  static const std::regex place("(?:^|; ?)" + COOKIE + "([^;]*)");
  const auto cookies = request.get_header_value("Cookie");
  std::smatch found;
  return std::regex_search(cookies, found, place) ? found[1].str() : "";
}

struct Pages {
  void showForm(const Request&, Response& response) const {
    answerPage(response, "Sign in", filled(assets::SIGN_IN, {{"wrong", ""}, {"email", ""}}));
  }

  void logIn(const Request& request, Response& response) const {
    const auto email = request.get_param_value("email");
    if (const auto account = records.signIn(email, request.get_param_value("password"))) {
      const std::string token = records.openSession(*account).at("accessToken");
      response.set_header("Set-Cookie", COOKIE + token + "; Path=/; HttpOnly; SameSite=Lax" +
                                            (secure ? "; Secure" : ""));
      return response.set_redirect("/case-notes", 303);
    }
    const Values values = {{"wrong", "Invalid email or password"}, {"email", email}};
    answerPage(response, "Sign in", filled(assets::SIGN_IN, values));
    response.status = 401;
  }

  void showNotes(const Request& request, Response& response) const {
    const auto account = records.accountOf(tokenOf(request));
    if (!account) return response.set_redirect("/login", 303);
    const auto notes = records.newestNotes(*account);
    std::string articles = notes.empty() ? "<p class=\"empty\">No notes yet.</p>\n" : "";
    for (const auto& note : notes) articles += article(note);
    const Values values = {{"email", records.email(*account)}, {"notes", articles}};
    answerPage(response, "Case notes", filled(assets::NOTES, values));
  }

  Records& records;
  bool secure;
};

}  // namespace

Routes pageRoutes(Records& records, bool secure) {
  const auto page = [pages = Pages{records, secure}](auto operation) {
    return std::bind_front(operation, pages);
  };
  return {{"GET", "/login", page(&Pages::showForm)},
          {"POST", "/login", page(&Pages::logIn)},
          {"GET", "/case-notes", page(&Pages::showNotes)}};
}

}  // namespace notewick::service
