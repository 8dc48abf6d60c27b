#include "client/uri.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace notewick {
namespace {

bool isIn(char character, std::string_view set) {
  return set.find(character) != set.npos;
}

bool isAlpha(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

bool isHex(char character) {
  return isDigit(character) || (character >= 'a' && character <= 'f') ||
         (character >= 'A' && character <= 'F');
}

/// Whether `text` is made of unreserved characters, sub-delimiters, percent-encoded bytes and those
/// of `more`.
bool consistsOf(std::string_view text, std::string_view more) {
  for (std::size_t place = 0; place < text.size(); ++place) {
    const char character = text[place];
    if (character == '%') {
      if (place + 2 >= text.size() || !isHex(text[place + 1]) || !isHex(text[place + 2])) {
        return false;
      }
      place += 2;
    } else if (!isAlpha(character) && !isDigit(character) && !isIn(character, "-._~!$&'()*+,;=") &&
               !isIn(character, more)) {
      return false;
    }
  }
  return true;
}

bool isScheme(std::string_view text) {
  return !text.empty() && isAlpha(text.front()) &&
         std::all_of(text.begin(), text.end(), [](char character) {
           return isAlpha(character) || isDigit(character) || isIn(character, "+-.");
         });
}

bool isHost(std::string_view text) {
  if (!text.starts_with('[')) return consistsOf(text, "");
  if (!text.ends_with(']') || text.size() < 2) return false;
  const auto literal = text.substr(1, text.size() - 2);
  return !literal.empty() && !isIn('%', literal) && consistsOf(literal, ":");
}

bool isAuthority(std::string_view text) {
  const auto at = text.rfind('@');
  if (at != text.npos) {
    if (!consistsOf(text.substr(0, at), ":")) return false;
    text.remove_prefix(at + 1);
  }
  const auto bracket = text.rfind(']');
  const auto colon = text.find(':', bracket == text.npos ? 0 : bracket);
  const auto port = colon == text.npos ? std::string_view() : text.substr(colon + 1);
  return isHost(text.substr(0, colon)) && std::all_of(port.begin(), port.end(), isDigit);
}

/// Takes from `text` what stands before the first of `ends`, or all of it.
std::string_view takeUntil(std::string_view& text, std::string_view ends) {
  const auto head = text.substr(0, text.find_first_of(ends));
  text.remove_prefix(head.size());
  return head;
}

}  // namespace

bool isUriReference(std::string_view text) {
  const auto colon = text.find_first_of(":/?#");
  const bool hasScheme = colon != text.npos && text[colon] == ':';
  if (hasScheme) {
    if (!isScheme(text.substr(0, colon))) return false;
    text.remove_prefix(colon + 1);
  }
  if (text.starts_with("//")) {
    text.remove_prefix(2);
    if (!isAuthority(takeUntil(text, "/?#"))) return false;
  }
  if (!consistsOf(takeUntil(text, "?#"), ":@/")) return false;
  if (text.starts_with('?')) {
    text.remove_prefix(1);
    if (!consistsOf(takeUntil(text, "#"), ":@/?")) return false;
  }
  if (text.starts_with('#')) text.remove_prefix(1);
  return consistsOf(text, ":@/?");
}

}  // namespace notewick
