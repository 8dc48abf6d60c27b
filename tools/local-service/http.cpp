#include "tools/local-service/http.h"

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>

namespace notewick::service {
namespace {

char lower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// Calls visit(name, value) for each "name=value" until it returns true.
template <class Visit>
void eachPair(std::string_view text, char separator, Visit visit) {
  while (!text.empty()) {
    const auto end = std::min(text.find(separator), text.size());
    const auto pair = text.substr(0, end);
    const auto equals = std::min(pair.find('='), pair.size());
    if (visit(pair.substr(0, equals), pair.substr(std::min(equals + 1, pair.size())))) return;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

std::optional<char> escapedByte(std::string_view digits) {
  unsigned char value = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  if (digits.size() != 2 || error != std::errc{} || end != digits.data() + 2) return std::nullopt;
  return static_cast<char>(value);
}

std::string formDecoded(std::string_view text) {
  std::string decoded;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const auto byte = text[at] == '%' ? escapedByte(text.substr(at + 1, 2)) : std::nullopt;
    decoded += byte ? *byte : text[at] == '+' ? ' ' : text[at];
    if (byte) at += 2;
  }
  return decoded;
}

}  // namespace

bool HeaderOrder::operator()(std::string_view left, std::string_view right) const {
  return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                      [](char a, char b) { return lower(a) < lower(b); });
}

std::string Request::header(std::string_view name) const {
  const auto found = headers.find(name);
  return found == headers.end() ? std::string{} : found->second;
}

std::optional<std::string> Request::cookie(std::string_view name) const {
  std::optional<std::string> found;
  const auto sent = header("Cookie");
  eachPair(sent, ';', [&](std::string_view key, std::string_view value) {
    key.remove_prefix(std::min(key.find_first_not_of(' '), key.size()));
    if (key == name) found = std::string(value);
    return found.has_value();
  });
  return found;
}

std::optional<std::string> Request::formField(std::string_view name) const {
  std::optional<std::string> found;
  eachPair(body, '&', [&](std::string_view key, std::string_view value) {
    if (formDecoded(key) == name) found = formDecoded(value);
    return found.has_value();
  });
  return found;
}

Answer jsonAnswer(int status, const nlohmann::json& body) {
  constexpr auto replacing = nlohmann::json::error_handler_t::replace;
  return {.status = status,
          .contentType = "application/json",
          .body = body.dump(-1, ' ', false, replacing),
          .headers = {{"Cache-Control", "no-store"}}};
}

Answer errorAnswer(int status, std::string_view text) {
  return jsonAnswer(status, {{"error", text}});
}

Answer seeOther(std::string_view location) {
  return {.status = 303, .headers = {{"Location", std::string(location)}}};
}

}  // namespace notewick::service
