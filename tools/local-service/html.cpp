#include "tools/local-service/html.h"

#include <array>
#include <cstdio>
#include <ctime>

namespace notewick::service {
namespace {

constexpr std::string_view STYLE = R"css(
:root { color-scheme: light dark; --ink: #1d2329; --soft: #5c6670; --paper: #f4f6f7;
  --card: #ffffff; --line: #dce1e5; --accent: #17695a; --on-accent: #ffffff; --wrong: #b3261e; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #e7eaed; --soft: #a0aab4; --paper: #14181b; --card: #1d2327;
    --line: #323a41; --accent: #6fd0ba; --on-accent: #07251f; --wrong: #ff9a92; } }
* { box-sizing: border-box; }
body { margin: 0; background: var(--paper); color: var(--ink);
  font: 16px/1.5 system-ui, "Noto Sans", "DejaVu Sans", sans-serif; }
main { max-width: 44rem; margin: 0 auto; padding: 2rem 1.25rem 4rem; }
header { display: flex; flex-wrap: wrap; gap: .5rem 1rem; align-items: center;
  margin-bottom: 1.5rem; }
header p { margin: 0 0 0 auto; color: var(--soft); font-size: .9rem; overflow-wrap: anywhere; }
h1 { margin: 0; font-size: 1.6rem; line-height: 1.25; }
h2 { margin: 0; font-size: 1.05rem; overflow-wrap: anywhere; }
article { background: var(--card); border: 1px solid var(--line); border-radius: .6rem;
  padding: 1rem 1.25rem; margin-bottom: .9rem; }
.facts { margin: .1rem 0 0; color: var(--soft); font-size: .9rem; }
.note { margin: .6rem 0; white-space: pre-wrap; overflow-wrap: anywhere; }
.captured { margin: 0; color: var(--soft); font-size: .8rem; }
.empty { color: var(--soft); }
.sign-in { max-width: 24rem; margin: 8vh auto 0; background: var(--card);
  border: 1px solid var(--line); border-radius: .6rem; padding: 1.75rem; }
label { display: block; margin-top: 1rem; font-size: .9rem; }
input { width: 100%; margin-top: .3rem; padding: .55rem .7rem; font: inherit; color: inherit;
  background: var(--paper); border: 1px solid var(--soft); border-radius: .4rem; }
button { padding: .5rem 1rem; font: inherit; color: var(--on-accent); background: var(--accent);
  border: 1px solid var(--accent); border-radius: .4rem; cursor: pointer; }
.sign-in button { width: 100%; margin-top: 1.5rem; }
header button { padding: .25rem .75rem; font-size: .9rem; color: var(--ink);
  background: transparent; border-color: var(--soft); }
:focus-visible { outline: 2px solid var(--accent); outline-offset: 2px; }
.wrong { margin: 1rem 0 0; color: var(--wrong); }
)css";

std::string_view entity(char letter) {
  switch (letter) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    default:
      return {};
  }
}

bool isAllowed(char letter) {
  const auto code = static_cast<unsigned char>(letter);
  return (code >= 0x20 && code != 0x7f) || letter == '\n' || letter == '\t';
}

constexpr std::array<const char*, 12> MONTHS = {"January",   "February", "March",    "April",
                                                "May",       "June",     "July",     "August",
                                                "September", "October",  "November", "December"};

std::string spelled(int day, int month, int year) {
  return std::to_string(day) + " " + MONTHS.at(static_cast<std::size_t>(month - 1)) + " " +
         std::to_string(year);
}

}  // namespace

std::string escaped(std::string_view text) {
  std::string html;
  html.reserve(text.size());
  for (const char letter : text) {
    if (const auto known = entity(letter); !known.empty()) {
      html += known;
    } else if (isAllowed(letter)) {
      html += letter;
    } else {
      html += "\xEF\xBF\xBD";
    }
  }
  return html;
}

Answer htmlPage(int status, std::string_view title, std::string_view content) {
  std::string body =
      "<!doctype html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>";
  body.append(escaped(title)).append(" – VELK</title>\n<style>").append(STYLE);
  body.append("</style>\n</head>\n<body>\n<main>\n").append(content);
  body.append("</main>\n</body>\n</html>\n");
  return {.status = status,
          .contentType = "text/html; charset=utf-8",
          .body = std::move(body),
          .headers = {{"Cache-Control", "no-store"},
                      {"Content-Security-Policy",
                       "default-src 'none'; style-src 'unsafe-inline'; form-action 'self'; "
                       "frame-ancestors 'none'; base-uri 'none'"},
                      {"Referrer-Policy", "no-referrer"},
                      {"X-Content-Type-Options", "nosniff"}}};
}

std::string readableDate(std::string_view date) {
  int year = 0, month = 0, day = 0;
  const std::string text(date);
  const bool read = std::sscanf(text.c_str(), "%4d-%2d-%2d", &year, &month, &day) == 3;
  return read && month >= 1 && month <= 12 ? spelled(day, month, year) : text;
}

std::string readableTime(Time time) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  std::tm local{};
  localtime_r(&seconds, &local);
  std::array<char, 8> clock{};
  const auto length = std::strftime(clock.data(), clock.size(), ", %H:%M", &local);
  return spelled(local.tm_mday, local.tm_mon + 1, local.tm_year + 1900)
      .append(clock.data(), length);
}

}  // namespace notewick::service
