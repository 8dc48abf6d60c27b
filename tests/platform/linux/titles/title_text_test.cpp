#include "platform/linux/titles/title_text.h"

#include <gtest/gtest.h>

#include <string>

namespace notewick {
namespace {

using std::string_literals::operator""s;

TEST(TitleText, PassesUtf8OnAsItIs) {
  EXPECT_EQ(decodedText("Léna O’Keefe — 語 😀", TextEncoding::utf8), "Léna O’Keefe — 語 😀");
  EXPECT_EQ(decodedText("a\xff z", TextEncoding::utf8), "a\xff z");
}

TEST(TitleText, ReadsStringPropertiesAsLatin1) {
  EXPECT_EQ(decodedText("Ren\xe9 M\xfcller \xdf", TextEncoding::latin1), "René Müller ß");
}

TEST(TitleText, EndsAtTheFirstNul) {
  EXPECT_EQ(decodedText("shown\0not shown"s, TextEncoding::utf8), "shown");
  EXPECT_EQ(decodedText("shown\0\0"s, TextEncoding::latin1), "shown");
  EXPECT_EQ(decodedText("\0"s, TextEncoding::compoundText), "");
}

TEST(CompoundText, BeginsAsLatin1) {
  EXPECT_EQ(decodedText("Ren\xe9", TextEncoding::compoundText), "René");
}

TEST(CompoundText, ReadsSegmentsInUtf8) {
  EXPECT_EQ(decodedText("a \x1b%G\xe8\xaa\x9e\x1b%@ \xe9", TextEncoding::compoundText), "a 語 é");
}

TEST(CompoundText, ReplacesCharactersOfOtherSets) {
  EXPECT_EQ(decodedText("\x1b-F\xe1 b\x1b-A\xe9", TextEncoding::compoundText), "\uFFFD bé");
  EXPECT_EQ(decodedText("\x1b$(B8l\x1b(B ok", TextEncoding::compoundText), "\uFFFD\uFFFD ok");
}

TEST(CompoundText, SurvivesAnEscapeThatIsCutOff) {
  EXPECT_EQ(decodedText("a\x1b", TextEncoding::compoundText), "a");
  EXPECT_EQ(decodedText("a\x1b%", TextEncoding::compoundText), "a");
  EXPECT_EQ(decodedText("a\x1b$(", TextEncoding::compoundText), "a");
}

}  // namespace
}  // namespace notewick
