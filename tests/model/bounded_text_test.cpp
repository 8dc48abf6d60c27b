#include "model/bounded_text.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

constexpr std::size_t ANY = 1'000'000'000;
const std::string FAMILY = "\U0001F469\u200D\U0001F469\u200D\U0001F467";

std::string repeated(const std::string& part, std::size_t count) {
  std::string text;
  for (; count > 0; --count) text += part;
  return text;
}

TEST(BoundedText, ATextWithinTheBoundStaysAsItIs) {
  for (const std::string text : {"", "abc", "a b\n\tc ", "Zu sp\u00e4t …", "\r\n", "e\u0301"})
    EXPECT_EQ(boundedText(text, {10, 20}), text);
  EXPECT_EQ(boundedText("abc", {3, ANY}), "abc");
  EXPECT_EQ(boundedText("abc", {ANY, 3}), "abc");
}

TEST(BoundedText, ALongerOneIsCutAndSaysSo) {
  EXPECT_EQ(boundedText("abcd", {3, ANY}), "abc…");
  EXPECT_EQ(boundedText("abcd", {ANY, 3}), "abc…");
  EXPECT_EQ(boundedText("ab  ", {3, ANY}), "ab …") << "nothing is trimmed";
}

TEST(BoundedText, TheBoundThatIsReachedFirstCounts) {
  EXPECT_EQ(boundedText("äöüß", {3, 4}), "äö…");
  EXPECT_EQ(boundedText("äöüß", {1, 4}), "ä…");
}

TEST(BoundedText, ACharacterOfSeveralBytesIsKeptWholeOrNotAtAll) {
  EXPECT_EQ(boundedText("aä", {ANY, 2}), "a…");
  EXPECT_EQ(boundedText("a\U0001F600b", {ANY, 4}), "a…");
  EXPECT_EQ(boundedText("a\U0001F600b", {ANY, 5}), "a\U0001F600…");
}

TEST(BoundedText, ACutIsNeverInsideACluster) {
  for (const std::string& cluster :
       {FAMILY, std::string("e\u0301\u0323"), std::string("\r\n"),
        std::string("\U0001F1E9\U0001F1EA"), std::string("\u1112\u1161\u11AB"),
        std::string("\u0928\u093F"), std::string("\U0001F44D\U0001F3FD")}) {
    const std::string three = repeated(cluster, 3);
    EXPECT_EQ(boundedText(three, {3, ANY}), three);
    EXPECT_EQ(boundedText(three, {2, ANY}), repeated(cluster, 2) + "…");
    for (std::size_t bytes = 0; bytes < three.size(); ++bytes)
      EXPECT_EQ(boundedText(three, {ANY, bytes}), repeated(cluster, bytes / cluster.size()) + "…")
          << testing::PrintToString(cluster) << " in " << bytes;
  }
}

TEST(BoundedText, AClusterLongerThanTheBoundIsLeftOut) {
  const std::string tower = "e" + repeated("\u0301", 100);
  EXPECT_EQ(boundedText(tower, {10, 100}), "…");
  EXPECT_EQ(boundedText("ab" + tower + "c", {10, 100}), "ab…");
}

TEST(BoundedText, BytesThatAreNoUtf8CountAsCharacters) {
  EXPECT_EQ(boundedText("\xFF\xFE\xC3", {3, 3}), "\xFF\xFE\xC3");
  EXPECT_EQ(boundedText("\xFF\xFE\xC3", {2, 3}), "\xFF\xFE…");
  EXPECT_EQ(boundedText("a\xE2\x82", {ANY, 2}), "a\xE2…");
}

TEST(BoundedText, AZeroByteIsACharacter) {
  const std::string text("a\0b", 3);
  EXPECT_EQ(boundedText(text, {3, 3}), text);
  EXPECT_EQ(boundedText(text, {2, 3}), text.substr(0, 2) + "…");
}

TEST(BoundedText, MegabytesAreCutAsWell) {
  EXPECT_EQ(boundedText(repeated("<", 8'000'000), {1000, 8192}), repeated("<", 1000) + "…");
  EXPECT_EQ(boundedText(repeated("\u0301", 4'000'000), {1000, 8192}), "…");
  EXPECT_EQ(boundedText(repeated(FAMILY, 400'000), {1000, 8192}), repeated(FAMILY, 455) + "…");
}

}  // namespace
}  // namespace notewick
