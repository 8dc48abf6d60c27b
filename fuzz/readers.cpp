#include "fuzz/readers.h"

#include <map>

#include "fuzz/targets.h"

namespace notewick::fuzz {
namespace {

bool take(std::string_view& text, std::string_view expected) {
  if (!text.starts_with(expected)) return false;
  text.remove_prefix(expected.size());
  return true;
}

/// A text with its escapes replaced; absent where one is not in the table, or is cut.
std::optional<std::string> unescaped(std::string_view text, char mark,
                                     const std::map<char, char>& escapes) {
  std::string plain;
  for (std::size_t place = 0; place < text.size(); ++place) {
    if (text[place] != mark) {
      plain += text[place];
      continue;
    }
    if (++place == text.size()) return std::nullopt;
    const auto escape = escapes.find(text[place]);
    if (escape == escapes.end()) return std::nullopt;
    plain += escape->second;
  }
  return plain;
}

/// What stands between the quotes that `text` consists of; quotes, backquotes and dollars are
/// escaped in it.
std::optional<std::string> unquoted(std::string_view text) {
  if (text.size() < 2 || !take(text, "\"") || !text.ends_with('"')) return std::nullopt;
  text.remove_suffix(1);
  for (std::size_t place = 0; place < text.size(); ++place) {
    if (text[place] == '\\')
      ++place;
    else if (text[place] == '"' || text[place] == '`' || text[place] == '$')
      return std::nullopt;
  }
  return unescaped(text, '\\', {{'"', '"'}, {'`', '`'}, {'$', '$'}, {'\\', '\\'}});
}

}  // namespace

std::optional<std::string> takeLiteral(std::string_view& script) {
  if (!take(script, "\"")) return std::nullopt;
  std::string text;
  while (!script.empty() && script.front() != '"') {
    const bool isEscaped = take(script, "\\");
    if (script.empty() || (isEscaped && script.front() != '"' && script.front() != '\\'))
      return std::nullopt;
    text += script.front();
    script.remove_prefix(1);
  }
  return take(script, "\"") ? std::optional(text) : std::nullopt;
}

std::optional<std::vector<std::string>> itemsOf(std::string_view list) {
  std::vector<std::string> items;
  if (!take(list, "[")) return std::nullopt;
  while (!take(list, "]")) {
    if (!items.empty() && !take(list, ", ")) return std::nullopt;
    const auto item = takeLiteral(list);
    if (!item) return std::nullopt;
    items.push_back(*item);
  }
  return list.empty() ? std::optional(items) : std::nullopt;
}

std::optional<std::string> onlyArgument(std::string_view desktopEntry) {
  std::optional<std::string> value;
  int groups = 0;
  for (const auto& line : parts(desktopEntry, '\n')) {
    if (line.starts_with('[')) ++groups;
    if (!line.starts_with("Exec=")) continue;
    if (value) return std::nullopt;
    value = line.substr(line.find('=') + 1);
  }
  if (!value || groups != 1) return std::nullopt;
  const auto string =
      unescaped(*value, '\\', {{'s', ' '}, {'n', '\n'}, {'t', '\t'}, {'r', '\r'}, {'\\', '\\'}});
  const auto argument = string ? unquoted(*string) : std::nullopt;
  return argument ? unescaped(*argument, '%', {{'%', '%'}}) : std::nullopt;
}

}  // namespace notewick::fuzz
