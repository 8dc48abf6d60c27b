#include "model/unicode.h"

#include <gmock/gmock.h>

namespace notewick {
namespace {

using testing::ElementsAre;

TEST(ValidUtf8, KeepsWhatIsValid) {
  const std::string text("a\0\u00e9\u0928\U0001F600", 11);
  EXPECT_EQ(validUtf8(text), text);
}

TEST(ValidUtf8, ReplacesEachMaximalIllFormedPartOnce) {
  const std::pair<const char*, const char*> rows[] = {
      {"\xFFx", "\uFFFDx"},
      {"\xE2\x82x", "\uFFFDx"},
      {"\xEF\xBFx", "\uFFFDx"},
      {"\xF0\x9F\x98x", "\uFFFDx"},
      {"\xC3", "\uFFFD"},
      {"\xF0\x9F\x98", "\uFFFD"},
      {"\xC3\xC3\xA9", "\uFFFD\u00e9"},
      {"\x80\xBF", "\uFFFD\uFFFD"},
      {"\xC0\xAF", "\uFFFD\uFFFD"},
      {"\xE0\x80\xAF", "\uFFFD\uFFFD\uFFFD"},
      {"\xE0\xA0x", "\uFFFDx"},
      {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
      {"\xED\x9Fx", "\uFFFDx"},
      {"\xC1\x80", "\uFFFD\uFFFD"},
      {"\xF5\x80\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xF0\x8F\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xF0\x90x", "\uFFFDx"},
      {"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xF4\x8F\xBFx", "\uFFFDx"},
  };
  for (const auto& [bytes, valid] : rows)
    EXPECT_EQ(validUtf8(bytes), valid) << testing::PrintToString(bytes);
}

TEST(LowerCased, FollowsTheFullUnconditionalMapping) {
  EXPECT_EQ(lowerCased("AZ@[`{ O'Keefe"), "az@[`{ o'keefe");
  EXPECT_EQ(lowerCased("\u00c9\u0416\u0394\u1EA2"), "\u00e9\u0436\u03b4\u1ea3");
  EXPECT_EQ(lowerCased("\u212A\u2126\u01C5"), "k\u03c9\u01c6");
  EXPECT_EQ(lowerCased("\u1E9E\u00df"), "\u00df\u00df");
}

TEST(LowerCased, GoesByTheCodePointAlone) {
  EXPECT_EQ(lowerCased("\u0130\u0131I"), "i\u0307\u0131i");
  EXPECT_EQ(lowerCased("\u039F\u03A3"), "\u03bf\u03c3") << "no final sigma";
}

TEST(Folded, IsLowerCasedAndDecomposed) {
  EXPECT_EQ(folded("REN\u00c9"), "rene\u0301");
  EXPECT_EQ(folded("\uD55C"), "\u1112\u1161\u11AB");
  EXPECT_EQ(folded("\u1EC6"), "e\u0323\u0302");
}

TEST(Folded, OrdersStackedMarksOfDifferentClassesOnly) {
  EXPECT_EQ(folded("a\u0302\u0323b\u0302\u0323"), "a\u0323\u0302b\u0323\u0302");
  std::string ofOneClass = "a";
  for (int pair = 0; pair < 20; ++pair) ofOneClass += "\u0302\u0301";
  EXPECT_EQ(folded(ofOneClass), ofOneClass);
}

TEST(Folded, OrdersMarksThatLettersBringWithThem) {
  EXPECT_EQ(folded("\u00c2\u0323"), "a\u0323\u0302");
  EXPECT_EQ(folded("\u0130\u0323"), "i\u0323\u0307");
  EXPECT_EQ(folded("\u00e2b\u0323"), "a\u0302b\u0323");
}

TEST(Folded, IsTheFoldedPartsOneBehindTheOtherWhereABlankIsBetween) {
  for (const std::string part : {"Ren\u00c9", "\u6848\u4F8B", "\uD55C\uAD6D", "\U0001F469\u200D"})
    EXPECT_EQ(folded(part + " " + part), folded(part) + " " + folded(part));
}

TEST(Folded, RepairsWhatIsNoUtf8) {
  EXPECT_EQ(folded("A\xFF\u00c9\xE2\x82"
                   "B\xF0\x9F\x98"),
            "a\uFFFDe\u0301\uFFFDb\uFFFD");
}

TEST(ClusterBoundary, StandsBetweenCharactersAsAReaderSeesThem) {
  const std::string text = "a\u00e9\r\nb\u0928\u093F\U0001F469\u200D\U0001F467";
  std::vector<std::size_t> boundaries;
  for (std::size_t place = 0; place <= text.size(); ++place) {
    const bool isInsideCodePoint = (static_cast<unsigned char>(text[place]) & 0xC0) == 0x80;
    if (!isInsideCodePoint && isClusterBoundary(text, place)) boundaries.push_back(place);
  }
  EXPECT_THAT(boundaries, ElementsAre(0, 1, 3, 5, 6, 12, text.size()));
  EXPECT_TRUE(isClusterBoundary("", 0));
}

TEST(ClusterBoundary, CountsFlagsFromTheStartOfTheirRow) {
  const std::string flags = "x\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7";
  EXPECT_TRUE(isClusterBoundary(flags, 1));
  EXPECT_FALSE(isClusterBoundary(flags, 5));
  EXPECT_TRUE(isClusterBoundary(flags, 9));
  EXPECT_FALSE(isClusterBoundary(flags, 13));
}

TEST(Composed, ComposesCanonically) {
  EXPECT_EQ(composed("Rene\u0301"), "Ren\u00e9");
  EXPECT_EQ(composed("\u1112\u1161\u11AB"), "\uD55C");
  EXPECT_EQ(composed("\u212B"), "\u00c5");
  EXPECT_EQ(composed("\uFB01"), "\uFB01");
  EXPECT_EQ(composed("e\u0301\xFF"), "\u00e9\uFFFD");
}

TEST(TrimmedOfBlanks, RemovesSpaceSeparatorsAndTabsAtTheEnds) {
  EXPECT_EQ(trimmedOfBlanks(" \t\u00a0\u2003\u3000a b\u3000\u2003\u00a0\t "), "a b");
  EXPECT_EQ(trimmedOfBlanks(" \t "), "");
}

TEST(TrimmedOfBlanks, KeepsLineBreaksAndInvisibleCharacters) {
  EXPECT_EQ(trimmedOfBlanks("\n a \n"), "\n a \n");
  EXPECT_EQ(trimmedOfBlanks("\u200ba\u200b"), "\u200ba\u200b");
  EXPECT_EQ(trimmedOfBlanks("\u2028a\v"), "\u2028a\v");
}

TEST(TrimmedOfBlanksAndLineBreaks, RemovesBothAtTheEnds) {
  EXPECT_EQ(trimmedOfBlanksAndLineBreaks("\n\r\v\f \t\u0085\u2028\u2029\u00a0a\nb \n"), "a\nb");
  EXPECT_EQ(trimmedOfBlanksAndLineBreaks(" \n\t\r\n "), "");
  EXPECT_EQ(trimmedOfBlanksAndLineBreaks("\u200b"), "\u200b");
}

}  // namespace
}  // namespace notewick
