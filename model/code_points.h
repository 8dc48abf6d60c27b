#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace notewick {

struct CodePoint {
  std::int32_t value;
  std::size_t length;  ///< in bytes
};

/// The code point at the start of a text that is not empty; U+FFFD for a maximal ill-formed part
/// (Unicode, table 3-7). Pure function, any thread.
[[nodiscard]] CodePoint firstCodePoint(std::string_view text);

/// Calls `visit` with the value of each code point of `text` in turn, and with its bytes.
template <class Visit>
void forEachCodePoint(std::string_view text, const Visit& visit) {
  while (!text.empty()) {
    const CodePoint first = firstCodePoint(text);
    visit(first.value, text.substr(0, first.length));
    text.remove_prefix(first.length);
  }
}

}  // namespace notewick
