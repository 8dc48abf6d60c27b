#include "detect/list_notation.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

TEST(ListNotation, AnEmptyListIsTwoBrackets) {
  EXPECT_EQ(listNotation({}), "[]");
}

TEST(ListNotation, QuotesItemsAndSeparatesThem) {
  EXPECT_EQ(listNotation({"Inbox"}), R"(["Inbox"])");
  EXPECT_EQ(listNotation({"Inbox", "", "Plan, b"}), R"(["Inbox", "", "Plan, b"])");
}

TEST(ListNotation, EscapesQuotesAndBackslashesOnly) {
  EXPECT_EQ(listNotation({R"(a "b" \ c)"}), R"(["a \"b\" \\ c"])");
  EXPECT_EQ(listNotation({"a\nb\u00e9'"}), "[\"a\nb\u00e9'\"]");
}

}  // namespace
}  // namespace notewick
