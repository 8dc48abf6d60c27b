#include "detect/quoted_text.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

TEST(ListNotation, QuotesItemsAndSeparatesThem) {
  EXPECT_EQ(listNotation({}), "[]");
  EXPECT_EQ(listNotation({"Inbox", "", "Plan, b"}), R"(["Inbox", "", "Plan, b"])");
}

TEST(ListNotation, EscapesQuotesAndBackslashesOnly) {
  EXPECT_EQ(listNotation({"a \"b\" \\ c", "a\nb\u00e9'"}),
            "[\"a \\\"b\\\" \\\\ c\", \"a\nb\u00e9'\"]");
}

}  // namespace
}  // namespace notewick
