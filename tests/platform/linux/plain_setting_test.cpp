#include "platform/linux/plain_setting.h"

#include <gtest/gtest.h>

#include <string>

namespace notewick {
namespace {

/// What the line `key=...` in the general section says; nothing where QSettings is to read it.
std::optional<std::string> settingIn(const std::string& written) {
  const auto text = plainSetting(QByteArray::fromStdString("[General]\n" + written), "key");
  return text ? std::optional(text->toStdString()) : std::nullopt;
}

TEST(PlainSetting, IsWhatStandsThere) {
  for (const std::string text :
       {"https://a.example;x", "https://a.example,b, c", "https://u@a.example/%41#c", "a\\path",
        "ends\\", "@user:pw@host", "@Variant(x)", "a\"b;c\"", "Ren\u00e9", ""}) {
    EXPECT_EQ(settingIn("key=" + text + "\n"), text);
  }
}

TEST(PlainSetting, BlanksAndACommentDoNotBelongToIt) {
  EXPECT_EQ(settingIn(" key = \t https://a.example;x \r\n"), "https://a.example;x");
  EXPECT_EQ(settingIn("key=https://a.example;x ; the test server"), "https://a.example;x");
  EXPECT_EQ(settingIn("key= ; not decided yet"), "");
  EXPECT_EQ(settingIn("key=;x"), "");
}

TEST(PlainSetting, QuotesAndEscapesAreLeftToTheirReader) {
  for (const std::string text : {"\"a;b\"", "a\\\\b", "a\\tb", "a\\x41", "a\\0", "\\\"a\\\"",
                                 "@@Invalid()", "@String(a\\0b)"}) {
    EXPECT_EQ(settingIn("key=" + text + "\n"), std::nullopt) << text;
  }
}

TEST(PlainSetting, IsTheLastOfThisKeyInTheGeneralSection) {
  EXPECT_EQ(settingIn("other=a\nkey=b\nkeys=c\n;key=d\n"), "b");
  EXPECT_EQ(settingIn("key=a\nkey=b\n[Other]\nkey=c\n"), "b");
  EXPECT_EQ(settingIn("[Other]\nkey=a\n[general]\nkey=b\n"), "b");
  EXPECT_EQ(settingIn("[Other]\nkey=a\n"), std::nullopt);
  EXPECT_EQ(plainSetting("key=before any section\n", "key"), "before any section");
}

}  // namespace
}  // namespace notewick
