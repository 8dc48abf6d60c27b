#include "detect/window_titles.h"

#include <gmock/gmock.h>

#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto ABSENT = std::nullopt;

class WindowTitlesTest : public WorldTest {
 protected:
  [[nodiscard]] static std::vector<std::string> titles() {
    return frontmostWindowTitles().value().titles;
  }
};

TEST_F(WindowTitlesTest, AnApplicationMayHaveNoTitlesAndNoNameOrBeNone) {
  EXPECT_FALSE(frontmostWindowTitles());
  const std::pair<std::optional<std::string>, std::string> rows[] = {
      {"Mail", "Mail"}, {"", ""}, {ABSENT, "?"}};
  for (const auto& [name, shown] : rows) {
    screen.show({name, "", {}});
    EXPECT_EQ(frontmostWindowTitles().value().app, shown);
    EXPECT_THAT(titles(), IsEmpty());
  }
  EXPECT_EQ(accessibility.queries, 0) << "trust is not asked for";
}

TEST_F(WindowTitlesTest, TheFocusedWindowComesFirstAndOnce) {
  screen.show({"Mail", "Reply", {"Inbox", "Reply", "Drafts"}});
  EXPECT_THAT(titles(), ElementsAre("Reply", "Inbox", "Drafts"));
}

TEST_F(WindowTitlesTest, EqualTitlesAreListedOnceAndThoseThatDifferInAnyByteAreTwo) {
  screen.show({"Mail", "Ren\u00e9", {"Rene\u0301", "Ren\u00e9 ", "Rene\u0301", "ren\u00e9"}});
  EXPECT_THAT(titles(), ElementsAre("Ren\u00e9", "Rene\u0301", "Ren\u00e9 ", "ren\u00e9"));
}

TEST_F(WindowTitlesTest, OnlyTheFirstEightWindowsAreReadAndTheFocusedOneAlways) {
  screen.show({"Browser", "12", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "12"}});
  EXPECT_THAT(titles(), ElementsAre("12", "1", "2", "3", "4", "5", "6", "7", "8"));
}

TEST_F(WindowTitlesTest, WindowsWithoutTitleAreSkippedAndStillCountAmongTheEight) {
  screen.show({"Browser", ABSENT, {"", ABSENT, "3", "4", "5", "6", "7", "8", "9"}});
  EXPECT_THAT(titles(), ElementsAre("3", "4", "5", "6", "7", "8"));
}

TEST_F(WindowTitlesTest, TitlesAreNeitherTrimmedNorCut) {
  const std::string strange = " \t Plan\n" + std::string(10'000, 'x') + " ";
  screen.show({"Mail", strange, {" "}});
  EXPECT_THAT(titles(), ElementsAre(strange, " "));
}

TEST_F(WindowTitlesTest, TitlesEndAtTheFirstNul) {
  screen.show({"Mail", std::string("Plan\0hidden", 11), {std::string("\0hidden", 7)}});
  EXPECT_THAT(titles(), ElementsAre("Plan"));
}

TEST_F(WindowTitlesTest, TextThatIsNoUtf8IsRepairedBeforeItIsCompared) {
  screen.show({"Ed\xff", "Plan \xff", {"Plan \xfe", "Plan \uFFFD"}});
  EXPECT_EQ(frontmostWindowTitles().value().app, "Ed\uFFFD");
  EXPECT_THAT(titles(), ElementsAre("Plan \uFFFD"));
}

}  // namespace
}  // namespace notewick
