#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

namespace notewick {

/// Objects and arrays that may stand in one another.
inline constexpr std::size_t DEEPEST_NESTING = 512;

/// Reads a JSON text (RFC 8259) from anywhere, hostile or damaged. A byte-order mark is skipped; of
/// a doubled key the last counts. A whole number that fits 64 bits is an integer however it is
/// written, so that no digit is lost; 1e3 is one, but minus zero stays a double. Absent when the
/// text is no JSON, holds invalid UTF-8 or a number beyond a double, or nests deeper than 512
/// levels.
[[nodiscard]] std::optional<nlohmann::json> parseJson(std::string_view text);

}  // namespace notewick
