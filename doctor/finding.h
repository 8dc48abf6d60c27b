#pragma once

#include <string>
#include <string_view>

namespace notewick {

/// What one check of notewick-doctor has found. The text goes to people who help the user: it holds
/// no name, title, token, password or address of a person. Where something is not as it should be
/// it ends with what to do.
struct Finding {
  bool ok;
  std::string text;

  friend bool operator==(const Finding&, const Finding&) = default;
};

[[nodiscard]] inline Finding fine(std::string text) {
  return {true, std::move(text)};
}
[[nodiscard]] inline Finding toDo(std::string text) {
  return {false, std::move(text)};
}

/// The finding as a line for people and for scripts, without a line feed: "ok" or "todo" in six
/// columns, the name of the check, a colon, a blank, the text. Whatever the text is made of, there
/// is no control character in the line.
[[nodiscard]] std::string lineOf(std::string_view check, const Finding& finding);

}  // namespace notewick
