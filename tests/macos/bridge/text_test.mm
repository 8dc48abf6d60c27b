#include "platform/macos/bridge/text.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

TEST(MacosTextTest, BringsTextThereAndBackUnchanged) {
  for (const std::string& text :
       {std::string("Zoë O’Keefe — \xF0\x9F\x93\x9D e\xCC\x81"), std::string("a\0b", 3)}) {
    EXPECT_EQ(utf8(nsString(text)), text);
  }
}

TEST(MacosTextTest, MakesNoTextOfInvalidUtf8AndNothingOfNil) {
  EXPECT_EQ(nsString("\xFF\xFE").length, 0U);
  EXPECT_EQ(utf8(nil), "");
}

TEST(MacosTextTest, ReplacesHalvesOfSurrogatePairs) {
  const unichar half = 0xD83D;
  const std::string text = utf8([NSString stringWithCharacters:&half length:1]);
  EXPECT_FALSE(text.empty());
  EXPECT_EQ(utf8(nsString(text)), text);
}

}  // namespace
}  // namespace notewick
