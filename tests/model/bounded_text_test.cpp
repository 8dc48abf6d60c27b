#include "model/bounded_text.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

constexpr std::size_t ANY = 1'000'000'000;

TEST(BoundedText, ATextWithinTheBoundStaysAsItIs) {
  EXPECT_EQ(boundedText("", {0, 0}), "");
  EXPECT_EQ(boundedText("a\tc", {3, 3}), "a\tc");
}

TEST(BoundedText, OfALongerOneTheBoundThatIsReachedFirstCounts) {
  EXPECT_EQ(boundedText("abcd", {3, ANY}), "abc…");
  EXPECT_EQ(boundedText("abcd", {ANY, 3}), "abc…");
  EXPECT_EQ(boundedText("äöüß", {3, 4}), "äö…");
  EXPECT_EQ(boundedText("äöüß", {1, 4}), "ä…");
  EXPECT_EQ(boundedText("ab  ", {3, ANY}), "ab …") << "nothing is trimmed";
}

TEST(BoundedText, ACutIsNeverInsideACharacterOrCluster) {
  for (const std::string cluster :
       {"ä", "\U0001F600", "e\u0301\u0323", "\r\n", "\U0001F1E9\U0001F1EA", "\u1112\u1161\u11AB",
        "\u0928\u093F", "\U0001F44D\U0001F3FD", "\U0001F469\u200D\U0001F469\u200D\U0001F467"}) {
    const std::string three = cluster + cluster + cluster;
    EXPECT_EQ(boundedText(three, {3, three.size()}), three);
    EXPECT_EQ(boundedText(three, {2, ANY}), cluster + cluster + "…");
    EXPECT_EQ(boundedText(three, {ANY, three.size() - 1}), cluster + cluster + "…");
    EXPECT_EQ(boundedText(three, {ANY, cluster.size()}), cluster + "…");
    EXPECT_EQ(boundedText(three, {ANY, cluster.size() - 1}), "…");
  }
}

TEST(BoundedText, IllFormedPartsAndZeroBytesCountAsCharacters) {
  const std::string text("\xFF\0\xE2\xFE", 4);
  EXPECT_EQ(boundedText(text, {4, 4}), text);
  for (std::size_t count = 0; count < 4; ++count) {
    EXPECT_EQ(boundedText(text, {count, ANY}), text.substr(0, count) + "…");
    EXPECT_EQ(boundedText(text, {ANY, count}), text.substr(0, count) + "…");
  }
}

}  // namespace
}  // namespace notewick
