#include "model/code_points.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::Pair;

std::vector<std::pair<std::int32_t, std::string>> allOf(std::string_view text) {
  std::vector<std::pair<std::int32_t, std::string>> all;
  forEachCodePoint(text, [&](std::int32_t value, std::string_view bytes) {
    all.emplace_back(value, std::string(bytes));
  });
  return all;
}

TEST(CodePoints, ComeOneByOneWithTheirBytes) {
  EXPECT_THAT(allOf("aé李\U0001F600"),
              ElementsAre(Pair('a', "a"), Pair(0xE9, "é"), Pair(0x674E, "李"),
                          Pair(0x1F600, "\U0001F600")));
  EXPECT_THAT(allOf(""), ElementsAre());
}

TEST(CodePoints, AMaximalIllFormedPartIsOneReplacement) {
  EXPECT_THAT(allOf("\xE6\x9D"
                    "a\xFF"),
              ElementsAre(Pair(0xFFFD, "\xE6\x9D"), Pair('a', "a"), Pair(0xFFFD, "\xFF")));
}

}  // namespace
}  // namespace notewick
