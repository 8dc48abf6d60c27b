#include "model/integers.h"

#include <gtest/gtest.h>

#include <string>

namespace notewick {
namespace {

using Limits = std::numeric_limits<std::int64_t>;

TEST(Integers, SumsStopAtTheEnds) {
  EXPECT_EQ(saturatingSum(Limits::max() - 1, 1), Limits::max());
  EXPECT_EQ(saturatingSum(Limits::max(), 1), Limits::max());
  EXPECT_EQ(saturatingSum(Limits::min(), -1), Limits::min());
  EXPECT_EQ(saturatingSum(Limits::min(), Limits::max()), -1);
}

TEST(WholeNumber, MayHaveAPointAndAnExponent) {
  for (const char* const text : {"12", "12.000", "1.2e1", "1.2E+1", "120e-1", "0.0012e4", "12e-0",
                                 "1200000000000000000000e-20", "0.00000000000000000000012e23"})
    EXPECT_EQ(wholeNumberIn(text), 12) << text;
  EXPECT_EQ(wholeNumberIn("-1e3"), -1000);
}

TEST(WholeNumber, KeepsDigitsThatADoubleWouldRound) {
  EXPECT_EQ(wholeNumberIn("9007199254740993.0"), 9007199254740993);
  EXPECT_EQ(wholeNumberIn("90071992547409930e-1"), 9007199254740993);
  EXPECT_EQ(wholeNumberIn("-9.007199254740993e15"), -9007199254740993);
}

TEST(WholeNumber, FitsUpToTheEnds) {
  for (const char* const zeros : {"", ".0", "e0", "000000e-6"}) {
    EXPECT_EQ(wholeNumberIn(std::string("9223372036854775807") + zeros), Limits::max()) << zeros;
    EXPECT_EQ(wholeNumberIn(std::string("-9223372036854775808") + zeros), Limits::min()) << zeros;
    EXPECT_FALSE(wholeNumberIn(std::string("9223372036854775808") + zeros)) << zeros;
    EXPECT_FALSE(wholeNumberIn(std::string("-9223372036854775809") + zeros)) << zeros;
  }
  EXPECT_FALSE(wholeNumberIn("1e19"));
  EXPECT_FALSE(wholeNumberIn("1e400"));
  EXPECT_FALSE(wholeNumberIn("-1e99999999999999999999"));
}

TEST(WholeNumber, HasNoDigitBehindThePoint) {
  for (const char* const text : {"0.5", "12.5", "1e-1", "-0.1", "12.00000000000000000001", "125e-1",
                                 "1.25e1", "1e-400", "1e-99999999999999999999"})
    EXPECT_FALSE(wholeNumberIn(text)) << text;
}

TEST(WholeNumber, ZeroIsZeroHoweverItIsWritten) {
  for (const char* const text : {"0", "-0", "0.0", "-0.0", "0e5", "0e-5", "0.000e3", "0e400",
                                 "0e9223372036854775807", "-0e-99999999999999999999"})
    EXPECT_EQ(wholeNumberIn(text), 0) << text;
}

}  // namespace
}  // namespace notewick
