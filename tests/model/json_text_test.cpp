#include "model/json_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <string>

namespace notewick {
namespace {

using nlohmann::json;
using namespace std::string_literals;

std::string nested(const std::string& open, std::size_t levels, const std::string& close) {
  std::string text;
  for (std::size_t level = 0; level < levels; ++level) text = open + text + close;
  return text;
}

TEST(JsonText, ReadsEveryKindOfValue) {
  EXPECT_EQ(parseJson(R"({"a":[1,-2.5,"x\u00e9\ud83d\ude00",true,null]})"),
            (json{{"a", {1, -2.5, "x\u00e9\U0001F600", true, nullptr}}}));
  EXPECT_EQ(parseJson(" \r\n\t7 "), json(7));
}

TEST(JsonText, SkipsOneByteOrderMark) {
  EXPECT_EQ(parseJson("\xEF\xBB\xBF[1]"), json::parse("[1]"));
  EXPECT_FALSE(parseJson("\xEF\xBB\xBF\xEF\xBB\xBF[1]"));
}

TEST(JsonText, OfADoubledKeyTheLastCounts) {
  EXPECT_EQ(parseJson(R"({"a":1,"b":2,"a":[3]})"), (json{{"a", {3}}, {"b", 2}}));
  EXPECT_EQ(parseJson(R"({"a":{"b":1},"a":{"c":[]}})"), (json{{"a", {{"c", json::array()}}}}));
}

TEST(JsonText, ReadsNestingUpTo512Levels) {
  EXPECT_TRUE(parseJson(nested("[", 512, "]")));
  EXPECT_FALSE(parseJson(nested("[", 513, "]")));
  EXPECT_TRUE(parseJson(nested("[{\"a\":[", 170, "]}]")));
  EXPECT_FALSE(parseJson(nested("[{\"a\":[", 171, "]}]")));
  EXPECT_FALSE(parseJson(std::string(100'000, '[')));
  EXPECT_TRUE(parseJson("[" + nested("[],{},", 512, "") + "[]]")) << "side by side";
}

TEST(JsonText, RefusesNumbersBeyondADouble) {
  EXPECT_TRUE(parseJson("[1e308]"));
  EXPECT_FALSE(parseJson("[-1e400]"));
  EXPECT_FALSE(parseJson("[" + std::string(400, '9') + "]"));
}

TEST(JsonText, WholeNumbersAreIntegersHoweverTheyAreWritten) {
  EXPECT_EQ(parseJson("[9007199254740993.0]")->dump(), "[9007199254740993]");
  EXPECT_EQ(parseJson("18446744073709551615"), json(std::numeric_limits<std::uint64_t>::max()));
}

TEST(JsonText, OtherNumbersAreTheNearestDoubleAndOneTooSmallForItZeroNotMinusZero) {
  const std::pair<std::string, double> rows[] = {
      {"0.5", 0.5},     {"-0.0", -0.0},  {"1e-300", 1e-300}, {"9223372036854775808.0", 0x1p63},
      {"1e300", 1e300}, {"1e-400", 0.0}, {"-1e-400", 0.0}};
  for (const auto& [text, nearest] : rows) {
    const auto number = parseJson(text).value();
    EXPECT_TRUE(number.is_number_float()) << text;
    EXPECT_EQ(std::bit_cast<std::uint64_t>(number.get<double>()),
              std::bit_cast<std::uint64_t>(nearest))
        << text;
  }
}

TEST(JsonText, RefusesWhatIsNoJson) {
  for (const std::string& bad : {""s, " "s, "nul"s, "NaN"s, "[1,]"s, "{\"a\"}"s, "{a:1}"s, "['a']"s,
                                 "[1] [2]"s, "[01]"s, "[+1]"s, "[.5]"s, "// note\n[1]"s,
                                 "\"a\tb\""s, "<html></html>"s, "[1]\0"s, "\xFF\xFE[\0]\0"s})
    EXPECT_FALSE(parseJson(bad)) << testing::PrintToString(bad);
}

TEST(JsonText, RefusesInvalidUtf8AndHalfASurrogatePair) {
  for (const std::string bad : {"\xFF", "\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80",
                                "\xE2\x82", "\x80", "\\ud800", "\\udc00"})
    EXPECT_FALSE(parseJson("[\"" + bad + "\"]")) << testing::PrintToString(bad);
}

}  // namespace
}  // namespace notewick
