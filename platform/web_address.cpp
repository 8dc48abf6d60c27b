#include "platform/web_address.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace notewick {
namespace {

constexpr std::string_view HTTP = "http://";
constexpr std::string_view HTTPS = "https://";

char lowerCase(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

std::string lowerCaseOrigin(std::string_view text) {
  std::string origin(uriOrigin(text));
  std::ranges::transform(origin, origin.begin(), lowerCase);
  return origin;
}

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

bool isNameCharacter(char character) {
  return isDigit(character) || (character >= 'a' && character <= 'z') || character == '-' ||
         character == '_' || character == '.';
}

/// Takes from `text` what stands before the first `end`, and that `end`.
std::string_view takePart(std::string_view& text, char end) {
  const auto part = text.substr(0, text.find(end));
  text.remove_prefix(std::min(part.size() + 1, text.size()));
  return part;
}

std::string_view withoutPort(std::string_view authority) {
  const auto colon = authority.find_last_not_of("0123456789");
  const bool hasPort = colon != authority.npos && authority[colon] == ':';
  return hasPort ? authority.substr(0, colon) : authority;
}

bool isNameBelowLocalhost(std::string_view host) {
  return host.ends_with(".localhost") && !host.starts_with('.') && host.find("..") == host.npos &&
         std::ranges::all_of(host, isNameCharacter);
}

/// A number up to 255, without leading zeros: some programs read those as octal.
bool isOctet(std::string_view text) {
  unsigned value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value <= 255 && text == std::to_string(value);
}

bool isLoopbackNumber(std::string_view host) {
  return takePart(host, '.') == "127" && isOctet(takePart(host, '.')) &&
         isOctet(takePart(host, '.')) && isOctet(host);
}

bool isLoopback(std::string_view host) {
  return host == "localhost" || host == "[::1]" || isNameBelowLocalhost(host) ||
         isLoopbackNumber(host);
}

}  // namespace

std::string_view uriOrigin(std::string_view text) {
  const auto slashes = text.find("://");
  if (slashes == text.npos) return text;
  return text.substr(0, text.find_first_of("/?#", slashes + 3));
}

bool isWebAddress(std::string_view text) {
  const std::string origin = lowerCaseOrigin(text);
  if (!origin.starts_with(HTTP) && !origin.starts_with(HTTPS)) return false;
  const auto host = withoutPort(origin);
  return !host.ends_with('/') && !host.ends_with('@');
}

bool isLoopbackAddress(std::string_view text) {
  const std::string origin = lowerCaseOrigin(text);
  const std::string_view scheme = origin.starts_with(HTTPS) ? HTTPS : HTTP;
  return origin.starts_with(scheme) &&
         isLoopback(withoutPort(std::string_view(origin).substr(scheme.size())));
}

bool isSecureAddress(std::string_view text) {
  return lowerCaseOrigin(text).starts_with(HTTPS) || isLoopbackAddress(text);
}

}  // namespace notewick
