#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace notewick {

/// Invalid UTF-8 is replaced by U+FFFD, one for each maximal ill-formed part (Unicode, 3.9, U+FFFD
/// substitution). Pure functions, any thread.
[[nodiscard]] std::string validUtf8(std::string_view text);

/// Each code point by its unconditional full lower-case mapping; capital I with dot above gives
/// two.
[[nodiscard]] std::string lowerCased(std::string_view text);

/// Text in the one form in which it is searched: valid UTF-8, lower-cased code point by code point,
/// canonically decomposed (Normalisation Form D).
[[nodiscard]] std::string folded(std::string_view text);

/// Whether a grapheme cluster (Unicode Annex 29) begins or ends at this place between two code
/// points of valid UTF-8. Costs as much as it is far from the ASCII character before.
[[nodiscard]] bool isClusterBoundary(std::string_view valid, std::size_t place);

/// The canonically composed text (Normalisation Form C), for comparing by code point.
[[nodiscard]] std::string composed(std::string_view text);

/// Without the horizontal blanks at both ends: the space separators (category Zs) and the tab.
[[nodiscard]] std::string trimmedOfBlanks(std::string_view text);

/// Without horizontal blanks and line breaks (U+000A to U+000D, U+0085, U+2028, U+2029) at both
/// ends.
[[nodiscard]] std::string trimmedOfBlanksAndLineBreaks(std::string_view text);

}  // namespace notewick
