#include "platform/linux/titles/title_text.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace notewick {
namespace {

using std::string_literals::operator""s;

TEST(TitleText, IsReadAsItsEncodingSays) {
  using enum TextEncoding;
  for (const auto& [bytes, encoding, title] :
       {std::tuple("Léna O’Keefe — 語 😀"s, utf8, "Léna O’Keefe — 語 😀"s),
        std::tuple("a\xff z"s, utf8, "a\xff z"s),
        std::tuple("Ren\xe9 M\xfcller \xdf"s, latin1, "René Müller ß"s),
        std::tuple("shown\0not shown"s, utf8, "shown"s),
        std::tuple("shown\0\0"s, latin1, "shown"s)}) {
    EXPECT_EQ(decodedText(bytes, encoding), title);
  }
}

TEST(CompoundText, BeginsAsLatin1HasSegmentsInUtf8AndCharactersThatAreReplaced) {
  for (const auto& [bytes, title] :
       {std::pair("\0"s, ""s), std::pair("Ren\xe9"s, "René"s),
        std::pair("a \x1b%G\xe8\xaa\x9e\x1b%@ \xe9"s, "a 語 é"s),
        std::pair("\x1b-F\xe1 b\x1b-A\xe9"s, "\uFFFD bé"s),
        std::pair("\x1b$(B8l\x1b(B ok"s, "\uFFFD\uFFFD ok"s),
        // escapes that are cut off
        std::pair("a\x1b"s, "a"s), std::pair("a\x1b%"s, "a"s), std::pair("a\x1b$("s, "a"s)}) {
    EXPECT_EQ(decodedText(bytes, TextEncoding::compoundText), title);
  }
}

}  // namespace
}  // namespace notewick
