#include "tools/local-service/pages.h"

#include <utility>

#include "tools/local-service/html.h"

namespace notewick::service {
namespace {

constexpr std::string_view COOKIE = "notewick_session";

Answer loginPage(int status, std::string_view email, std::string_view wrong) {
  std::string content =
      "<form class=\"sign-in\" method=\"post\" action=\"/login\">\n<h1>Sign in</h1>\n";
  if (!wrong.empty()) content += "<p class=\"wrong\" role=\"alert\">" + escaped(wrong) + "</p>\n";
  content +=
      "<label>E-mail\n<input type=\"email\" name=\"email\" autocomplete=\"username\" required" +
      std::string(email.empty() ? " autofocus" : "") + " value=\"" + escaped(email) +
      "\"></label>\n"
      "<label>Password\n<input type=\"password\" name=\"password\" "
      "autocomplete=\"current-password\" required" +
      std::string(email.empty() ? "" : " autofocus") +
      "></label>\n<button>Sign in</button>\n</form>\n";
  return htmlPage(status, "Sign in", content);
}

std::string article(const Note& note) {
  const auto& person = note.participant;
  return "<article>\n<h2>" + escaped(person.firstName + " " + person.lastName) +
         "</h2>\n<p class=\"facts\"><time datetime=\"" + escaped(note.sessionDate) + "\">" +
         escaped(readableDate(note.sessionDate)) + "</time> · " + std::to_string(note.minutes) +
         " min</p>\n<p class=\"note\">" + escaped(note.input) +
         "</p>\n<p class=\"captured\">Captured " + escaped(readableTime(note.capturedAt)) +
         "</p>\n</article>\n";
}

}  // namespace

Pages::Pages(Accounts& accounts, Notes& notes, Tokens& tokens, bool secure)
    : accounts_(accounts), notes_(notes), tokens_(tokens), secure_(secure) {}

void Pages::addTo(Router& router) {
  router.add("GET", "/", [](const Request&) { return seeOther("/case-notes"); });
  router.add("GET", "/login", [this](const Request& request) { return showLogin(request); });
  router.add("POST", "/login", [this](const Request& request) { return logIn(request); });
  router.add("POST", "/logout", [this](const Request& request) { return logOut(request); });
  router.add("GET", "/case-notes", [this](const Request& request) { return showNotes(request); });
}

Answer Pages::showLogin(const Request& request) {
  return visitor(request) ? seeOther("/case-notes") : loginPage(200, "", "");
}

Answer Pages::logIn(const Request& request) {
  const auto email = request.formField("email").value_or("");
  const auto account = accounts_.signIn(email, request.formField("password").value_or(""));
  if (!account) return loginPage(401, email, "Invalid email or password");
  auto answer = seeOther("/case-notes");
  answer.headers.push_back(cookie(tokens_.openPage(*account)));
  return answer;
}

Answer Pages::logOut(const Request& request) {
  tokens_.closePage(request.cookie(COOKIE).value_or(""));
  auto answer = seeOther("/login");
  auto [name, value] = cookie("");
  answer.headers.emplace_back(name, value + "; Max-Age=0");
  return answer;
}

Answer Pages::showNotes(const Request& request) {
  const auto account = visitor(request);
  if (!account) return seeOther("/login");
  std::string content = "<header>\n<h1>Case notes</h1>\n<p>" + escaped(accounts_.email(*account)) +
                        "</p>\n<form method=\"post\" action=\"/logout\"><button>Sign "
                        "out</button></form>\n</header>\n";
  const auto notes = notes_.newestFirst(*account);
  for (const auto& note : notes) content += article(note);
  if (notes.empty()) content += "<p class=\"empty\">No notes yet.</p>\n";
  return htmlPage(200, "Case notes", content);
}

std::optional<AccountId> Pages::visitor(const Request& request) {
  const auto token = request.cookie(COOKIE);
  return token ? tokens_.pageAccount(*token) : std::nullopt;
}

std::pair<std::string, std::string> Pages::cookie(std::string_view value) const {
  return {"Set-Cookie", std::string(COOKIE) + "=" + std::string(value) +
                            "; Path=/; HttpOnly; SameSite=Lax" + (secure_ ? "; Secure" : "")};
}

}  // namespace notewick::service
