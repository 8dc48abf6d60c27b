#pragma once

#include <string>
#include <vector>

namespace notewick {

/// "[" and "]" around the items, each in double quotes with inner double quotes and backslashes
/// escaped by a backslash, separated by ", "; "[]" when empty.
[[nodiscard]] std::string listNotation(const std::vector<std::string>& items);

}  // namespace notewick
