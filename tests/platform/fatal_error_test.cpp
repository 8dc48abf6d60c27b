#include "platform/fatal_error.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace notewick {
namespace {

TEST(FatalErrorDeathTest, TellsOneLineAndEndsTheProcess) {
  EXPECT_EXIT(fatalError("no way"), testing::ExitedWithCode(1), "^notewick: no way\n$");
}

TEST(FatalErrorDeathTest, StaysOnOneLineWhateverItQuotes) {
  EXPECT_EXIT(fatalError(std::string_view("a\nb\r\0c", 6)), testing::ExitedWithCode(1),
              "^notewick: a b  c\n$");
}

TEST(CheckedSum, AddsWhatFits) {
  EXPECT_EQ(checkedSum<std::int64_t>(2, -3), -1);
  EXPECT_EQ(checkedSum<std::size_t>(2, 3), 5u);
}

TEST(CheckedSumDeathTest, WhatDoesNotFitIsFatal) {
  using Limits = std::numeric_limits<std::int64_t>;
  EXPECT_EXIT((void)checkedSum<std::int64_t>(Limits::max(), 1), testing::ExitedWithCode(1), "");
  EXPECT_EXIT((void)checkedSum<std::int64_t>(Limits::min(), -1), testing::ExitedWithCode(1), "");
}

}  // namespace
}  // namespace notewick
