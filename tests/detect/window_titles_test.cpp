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

TEST_F(WindowTitlesTest, NoFrontmostApplicationIsNothing) {
  EXPECT_FALSE(frontmostWindowTitles());
}

TEST_F(WindowTitlesTest, AnApplicationWithoutTitlesHasAnEmptyList) {
  screen.show({"Mail", "", {}});
  EXPECT_EQ(frontmostWindowTitles().value().app, "Mail");
  EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(WindowTitlesTest, AnApplicationWithoutNameIsAQuestionMark) {
  screen.show({ABSENT, "Inbox", {}});
  EXPECT_EQ(frontmostWindowTitles().value().app, "?");
  screen.show({"", "Inbox", {}});
  EXPECT_EQ(frontmostWindowTitles().value().app, "") << "an empty name is a name";
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

TEST_F(WindowTitlesTest, WindowsWithoutTitleStillCountAmongTheEight) {
  screen.show({"Browser", ABSENT, {"", ABSENT, "3", "4", "5", "6", "7", "8", "9"}});
  EXPECT_THAT(titles(), ElementsAre("3", "4", "5", "6", "7", "8"));
}

TEST_F(WindowTitlesTest, AReadThatFailedIsSkipped) {
  screen.show({"Mail", ABSENT, {"Inbox", ABSENT, "Drafts"}});
  EXPECT_THAT(titles(), ElementsAre("Inbox", "Drafts"));
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

TEST_F(WindowTitlesTest, TrustIsNotAskedFor) {
  screen.show({"Mail", "Inbox", {}});
  EXPECT_THAT(titles(), ElementsAre("Inbox"));
  EXPECT_EQ(accessibility.queries, 0);
}

}  // namespace
}  // namespace notewick
