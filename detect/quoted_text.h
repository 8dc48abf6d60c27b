#pragma once

#include <string>
#include <vector>

namespace notewick {

/// The text in double quotes; double quotes and backslashes within are escaped by a backslash.
[[nodiscard]] std::string quotedText(const std::string& text);

/// "[" and "]" around the items, each quoted, separated by ", "; "[]" when empty.
[[nodiscard]] std::string listNotation(const std::vector<std::string>& items);

}  // namespace notewick
