#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace notewick {

inline constexpr std::size_t KIB = 1024;

/// How much of a text is kept, whichever is reached first.
struct TextBound {
  std::size_t clusters;  ///< grapheme clusters (Unicode Annex 29)
  std::size_t bytes;     ///< of UTF-8
};

/// `text` unchanged where it is within the bound. Of a longer one as many whole clusters of
/// its beginning as the bound allows, then "…", which is not counted: where already the first
/// cluster is too long, "…" alone. An ill-formed part counts as a character. Takes time for
/// the part that is kept only. Pure function, any thread.
[[nodiscard]] std::string boundedText(std::string_view text, const TextBound& bound);

}  // namespace notewick
