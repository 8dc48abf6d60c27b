#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace notewick {

/// Text in the one form in which it is searched: lower-cased code point by code point, canonically
/// decomposed, with the places where a grapheme cluster begins or ends.
struct FoldedText {
  std::string bytes;             ///< UTF-8, Normalisation Form D
  std::vector<bool> boundaries;  ///< one for each place in `bytes`, and one for its end
};

/// Invalid UTF-8 is replaced by U+FFFD, one for each maximal ill-formed part (Unicode, 3.9, U+FFFD
/// substitution). Pure functions, any thread.
[[nodiscard]] std::string validUtf8(std::string_view text);

/// Each code point by its unconditional full lower-case mapping; capital I with dot above gives
/// two.
[[nodiscard]] std::string lowerCased(std::string_view text);

/// The lower-cased and decomposed text with its grapheme cluster boundaries.
[[nodiscard]] FoldedText folded(std::string_view text);

/// The canonically composed text (Normalisation Form C), for comparing by code point.
[[nodiscard]] std::string composed(std::string_view text);

/// Without the horizontal blanks at both ends: the space separators (category Zs) and the tab.
[[nodiscard]] std::string trimmedOfBlanks(std::string_view text);

/// Without horizontal blanks and line breaks (U+000A to U+000D, U+0085, U+2028, U+2029) at both
/// ends.
[[nodiscard]] std::string trimmedOfBlanksAndLineBreaks(std::string_view text);

}  // namespace notewick
