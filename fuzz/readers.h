#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace notewick::fuzz {

// Readers of what the program writes for others, each by the other side's rules. They share no code
// with the program. Absent where the text breaks the rules.

/// The items of a list as the watch log writes it: ["a", "b"].
[[nodiscard]] std::optional<std::vector<std::string>> itemsOf(std::string_view list);

/// The text of the string literal that `script` begins with, which is taken from it
/// (AppleScript Language Guide, "Text literals").
[[nodiscard]] std::optional<std::string> takeLiteral(std::string_view& script);

/// The only argument of the Exec key of a desktop entry's main group, which has no other group
/// (freedesktop.org, Desktop Entry, "Values of type string", "The Exec key").
[[nodiscard]] std::optional<std::string> onlyArgument(std::string_view desktopEntry);

}  // namespace notewick::fuzz
