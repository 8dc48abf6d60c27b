#include "model/drawn_text.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

TEST(DrawnText, AHarmlessTextStaysAsItIs) {
  for (const std::string text : {"", "Lena O'Keefe", "Łukasz Żak-Ö", "李小龍", "e\u0301 \U0001F600",
                                 "a\u200D\u200Eb\u00AD"}) {
    EXPECT_EQ(drawnText(text), text);
  }
}

TEST(DrawnText, ControlsAndEndsOfLinesBecomeBlanks) {
  EXPECT_EQ(drawnText("a\tb\r\nc\x1b[1m\x7f"), "a b  c [1m ");
  EXPECT_EQ(drawnText(std::string("a\0b", 3)), "a b");
  EXPECT_EQ(drawnText("a\u0085b\u2028c\u2029d"), "a b c d");
}

TEST(DrawnText, MarksOfDirectionAreLeftOut) {
  EXPECT_EQ(drawnText("Lena\u202E efeeK'O"), "Lena efeeK'O");
  EXPECT_EQ(drawnText("\u202Aa\u202Bb\u202Cc\u202Dd\u2066e\u2067f\u2068g\u2069h\u2069"),
            "abcdefgh");
}

TEST(DrawnText, TextsThatLookAlikeHaveOneAppearance) {
  EXPECT_EQ(appearanceOf("Rene\u0301"), appearanceOf("René"));
  EXPECT_EQ(appearanceOf("Le\u200Bna O\u00AD'Ke\uFEFFefe"), appearanceOf("Lena O'Keefe"));
  EXPECT_NE(appearanceOf("Rene"), appearanceOf("René"));
}

TEST(DrawnText, WhatIsWrittenFromRightToLeftIsIsolatedWithinAnotherText) {
  EXPECT_EQ(drawnWithin("דנה כהן"), "\u2068דנה כהן\u2069");
  EXPECT_EQ(drawnWithin("سارة"), "\u2068سارة\u2069");
  EXPECT_EQ(drawnWithin("Dana \u202Eדנה"), "\u2068Dana דנה\u2069");
  EXPECT_EQ(drawnWithin("Dana\u202E"), "Dana");
  EXPECT_EQ(drawnText("דנה כהן"), "דנה כהן");
}

TEST(DrawnText, IllFormedTextIsRepaired) {
  EXPECT_EQ(drawnText("a\xff\xe2\x80"), "a\uFFFD\uFFFD");
}

}  // namespace
}  // namespace notewick
