#include "platform/linux/titles/title_text.h"

#include <gtest/gtest.h>

#include <string>

namespace notewick {
namespace {

using std::string_literals::operator""s;

TEST(TitleText, KeepsWellFormedUtf8) {
  EXPECT_EQ(decodedText("Léna O’Keefe — 語 😀", TextEncoding::utf8), "Léna O’Keefe — 語 😀");
}

TEST(TitleText, ReadsStringPropertiesAsLatin1) {
  EXPECT_EQ(decodedText("Ren\xe9 M\xfcller \xdf", TextEncoding::latin1), "René Müller ß");
}

TEST(TitleText, ReplacesEveryByteThatIsNotUtf8) {
  EXPECT_EQ(decodedText("a\xff\xfe z", TextEncoding::utf8), "a\uFFFD\uFFFD z");
  EXPECT_EQ(decodedText("a\xc3", TextEncoding::utf8), "a\uFFFD");
  EXPECT_EQ(decodedText("\xc0\xaf", TextEncoding::utf8), "\uFFFD\uFFFD");
  EXPECT_EQ(decodedText("\xed\xa0\x80", TextEncoding::utf8), "\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(decodedText("\xf4\x90\x80\x80", TextEncoding::utf8), "\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(TitleText, KeepsWhatFollowsADamagedCharacter) {
  EXPECT_EQ(decodedText("Tobias\xe2\x80 Hargreave", TextEncoding::utf8),
            "Tobias\uFFFD\uFFFD Hargreave");
}

TEST(TitleText, EndsAtTheFirstNul) {
  EXPECT_EQ(decodedText("shown\0not shown"s, TextEncoding::utf8), "shown");
  EXPECT_EQ(decodedText("shown\0\0"s, TextEncoding::latin1), "shown");
  EXPECT_EQ(decodedText("\0"s, TextEncoding::compoundText), "");
}

TEST(TitleText, EmptyStaysEmpty) {
  EXPECT_EQ(decodedText("", TextEncoding::utf8), "");
  EXPECT_EQ(decodedText("", TextEncoding::latin1), "");
  EXPECT_EQ(decodedText("", TextEncoding::compoundText), "");
}

TEST(TitleText, ReadsAMegabyte) {
  const std::string text(1 << 20, '\xe9');
  EXPECT_EQ(decodedText(text, TextEncoding::latin1).size(), 2U << 20);
  EXPECT_EQ(decodedText(text, TextEncoding::utf8).size(), 3U << 20);
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
