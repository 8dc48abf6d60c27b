#include "model/json_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <string>

namespace notewick {
namespace {

using nlohmann::json;

std::string nested(const std::string& open, std::size_t levels, const std::string& close) {
  std::string text;
  for (std::size_t level = 0; level < levels; ++level) text += open;
  for (std::size_t level = 0; level < levels; ++level) text += close;
  return text;
}

TEST(JsonText, ReadsEveryKindOfValue) {
  EXPECT_EQ(parseJson(R"({"a":[1,-2.5,"x\u00e9",true,null]})"),
            (json{{"a", {1, -2.5, "x\u00e9", true, nullptr}}}));
  EXPECT_EQ(parseJson(" \r\n\t7 "), json(7));
}

TEST(JsonText, SkipsOneByteOrderMark) {
  EXPECT_EQ(parseJson("\xEF\xBB\xBF[1]"), json::parse("[1]"));
  EXPECT_FALSE(parseJson("\xEF\xBB\xBF\xEF\xBB\xBF[1]"));
  EXPECT_FALSE(parseJson("\xEF\xBB\xBF"));
  EXPECT_FALSE(parseJson("\xEF\xBB[1]"));
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
}

TEST(JsonText, CountsNestingNotTheNumberOfValues) {
  std::string text = "[";
  for (int index = 0; index < 2000; ++index) text += "[],{},";
  EXPECT_TRUE(parseJson(text + "[]]"));
}

TEST(JsonText, SurvivesAHundredThousandLevels) {
  EXPECT_FALSE(parseJson(nested("[", 100'000, "]")));
  EXPECT_FALSE(parseJson(nested("{\"a\":", 100'000, "}")));
  EXPECT_FALSE(parseJson(std::string(100'000, '[')));
  EXPECT_FALSE(parseJson(std::string(100'000, '{')));
}

TEST(JsonText, RefusesInvalidUtf8) {
  for (const std::string bad :
       {"\xFF", "\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x82", "\x80"})
    EXPECT_FALSE(parseJson("[\"" + bad + "\"]")) << testing::PrintToString(bad);
}

TEST(JsonText, RefusesHalfASurrogatePair) {
  EXPECT_FALSE(parseJson(R"(["\ud800"])"));
  EXPECT_FALSE(parseJson(R"(["\udc00"])"));
  EXPECT_EQ(parseJson(R"(["\ud83d\ude00"])"), json::array({"\U0001F600"}));
}

TEST(JsonText, RefusesNumbersBeyondADouble) {
  EXPECT_FALSE(parseJson("[1e400]"));
  EXPECT_FALSE(parseJson("[-1e400]"));
  EXPECT_TRUE(parseJson("[1e308]"));
  EXPECT_FALSE(parseJson("[" + std::string(400, '9') + "]"));
}

TEST(JsonText, WholeNumbersAreIntegersHoweverTheyAreWritten) {
  for (const std::string text :
       {"9007199254740993", "9007199254740993.0", "9007199254740993e0", "90071992547409930e-1"}) {
    const auto number = parseJson(text).value();
    EXPECT_TRUE(number.is_number_integer()) << text;
    EXPECT_EQ(number, 9007199254740993) << text;
  }
  EXPECT_EQ(parseJson("-9223372036854775808.0"), json(std::numeric_limits<std::int64_t>::min()));
  EXPECT_EQ(parseJson("18446744073709551615"), json(std::numeric_limits<std::uint64_t>::max()));
}

TEST(JsonText, OtherNumbersAreTheNearestDouble) {
  for (const std::string text : {"0.5", "-0.0", "1e-300", "1e300", "9223372036854775808.0"}) {
    const auto number = parseJson(text).value();
    EXPECT_TRUE(number.is_number_float()) << text;
    EXPECT_EQ(std::bit_cast<std::uint64_t>(number.get<double>()),
              std::bit_cast<std::uint64_t>(std::stod(text)))
        << text;
  }
}

TEST(JsonText, RefusesATextCutAnywhere) {
  const std::string whole = R"([{"id":"1","n":[1.5e3,true,null],"t":"a\u00e9\n)"
                            "\u00e9\U0001F600\"}]";
  ASSERT_TRUE(parseJson(whole));
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_FALSE(parseJson(whole.substr(0, length))) << "cut to " << length << " bytes";
}

TEST(JsonText, RefusesWhatIsNoJson) {
  for (const std::string bad :
       {"", " ", "nul", "NaN", "Infinity", "[1,]", "{\"a\"}", "{a:1}", "['a']", "[1] [2]", "[1]x",
        "[01]", "[+1]", "[.5]", "[1.]", "[0x1]", "// note\n[1]", "\"a\tb\"", "<html></html>"})
    EXPECT_FALSE(parseJson(bad)) << bad;
  EXPECT_FALSE(parseJson(std::string("[1]\0", 4)));
  EXPECT_FALSE(parseJson(std::string("\xFF\xFE[\0]\0", 6)));
}

}  // namespace
}  // namespace notewick
