#pragma once

#include <string>
#include <string_view>

namespace notewick {

/// How the bytes of a text property are to be read (ICCCM 2.7.1 and the UTF8_STRING of EWMH).
enum class TextEncoding {
  utf8,
  latin1,        ///< the property type STRING
  compoundText,  ///< the property type COMPOUND_TEXT
};

/// The bytes up to the first NUL as UTF-8. Never fails. What is said to be UTF-8 is passed on as it
/// is, valid or not. Of compound text the segments in ASCII, Latin-1 and UTF-8 are read, which is
/// what toolkits of this century write; the characters of others become U+FFFD.
[[nodiscard]] std::string decodedText(std::string_view bytes, TextEncoding encoding);

}  // namespace notewick
