#include "detect/window_titles.h"

#include <gmock/gmock.h>

#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class WindowTitlesTest : public WorldTest {
 protected:
  [[nodiscard]] static std::vector<std::string> titles() {
    return frontmostWindowTitles().value().titles;
  }

  /// Titles "1", "2", ... with the focus on another window.
  void showWindows(int count) {
    FakeScreen::Application browser{"Browser", "Focused", true, {}};
    for (int number = 1; number <= count; ++number)
      browser.windows.push_back(std::to_string(number));
    screen.show(browser);
  }
};

TEST_F(WindowTitlesTest, NoFrontmostApplicationIsNothing) {
  EXPECT_FALSE(frontmostWindowTitles());
  EXPECT_EQ(screen.attributeReads, 0u);
}

TEST_F(WindowTitlesTest, AnApplicationWithoutTitlesHasAnEmptyList) {
  screen.show({"Mail", "", true, {}});
  EXPECT_EQ(frontmostWindowTitles().value().app, "Mail");
  EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(WindowTitlesTest, AnApplicationWithoutNameIsAQuestionMark) {
  screen.show({std::nullopt, "Inbox", true, {}});
  EXPECT_EQ(frontmostWindowTitles().value().app, "?");
}

TEST_F(WindowTitlesTest, AnEmptyNameIsKept) {
  screen.show({"", "Inbox", true, {}});
  EXPECT_EQ(frontmostWindowTitles().value().app, "");
}

TEST_F(WindowTitlesTest, TheFocusedWindowComesFirstAndOnce) {
  screen.show({"Mail", "Reply", true, {"Inbox", "Reply", "Drafts"}});
  EXPECT_THAT(titles(), ElementsAre("Reply", "Inbox", "Drafts"));
}

TEST_F(WindowTitlesTest, EqualTitlesAreListedOnce) {
  screen.show({"Mail", std::nullopt, false, {"Inbox", "Draft", "Inbox", "Draft"}});
  EXPECT_THAT(titles(), ElementsAre("Inbox", "Draft"));
}

TEST_F(WindowTitlesTest, TitlesThatDifferInAnyByteAreTwo) {
  screen.show({"Mail", "Ren\u00e9", true, {"Rene\u0301", "ren\u00e9", "Ren\u00e9 "}});
  EXPECT_THAT(titles(), SizeIs(4));
}

TEST_F(WindowTitlesTest, OnlyTheFirstEightWindowsAreRead) {
  showWindows(12);
  EXPECT_THAT(titles(), ElementsAre("Focused", "1", "2", "3", "4", "5", "6", "7", "8"));
  EXPECT_EQ(screen.attributeReads, 11u);
}

TEST_F(WindowTitlesTest, AWindowBeyondTheEighthCountsWhenItHasTheFocus) {
  screen.show({"Browser", "12", true, {"1", "2", "3", "4", "5", "6", "7", "8", "9", "12"}});
  EXPECT_THAT(titles(), ElementsAre("12", "1", "2", "3", "4", "5", "6", "7", "8"));
}

TEST_F(WindowTitlesTest, WindowsWithoutTitleStillCountAmongTheEight) {
  screen.show(
      {"Browser", std::nullopt, false, {"", std::nullopt, "3", "4", "5", "6", "7", "8", "9"}});
  EXPECT_THAT(titles(), ElementsAre("3", "4", "5", "6", "7", "8"));
}

TEST_F(WindowTitlesTest, TitlesAreTakenAsTheyAre) {
  const std::string strange = " \t Plan\n" + std::string(10'000, 'x') + " ";
  screen.show({"Mail", strange, true, {" "}});
  EXPECT_THAT(titles(), ElementsAre(strange, " "));
}

TEST_F(WindowTitlesTest, AFailedFocusReadLeavesTheWindows) {
  screen.show({"Mail", std::nullopt, false, {"Inbox"}});
  EXPECT_THAT(titles(), ElementsAre("Inbox"));
  screen.show({"Mail", std::nullopt, true, {"Inbox"}});
  EXPECT_THAT(titles(), ElementsAre("Inbox"));
}

TEST_F(WindowTitlesTest, AFailedTitleReadSkipsThatWindow) {
  screen.show({"Mail", "Reply", true, {"Inbox", std::nullopt, "Drafts"}});
  EXPECT_THAT(titles(), ElementsAre("Reply", "Inbox", "Drafts"));
}

TEST_F(WindowTitlesTest, WindowsThatVanishBetweenReadsAreSkipped) {
  screen.show({"Mail", "Reply", true, {"Inbox", "Drafts"}});
  const std::vector<std::size_t> titlesAfterReads = {0, 0, 1, 1, 2, 3};
  for (std::size_t reads = 0; reads < titlesAfterReads.size(); ++reads) {
    screen.vanishAfter(reads);
    EXPECT_THAT(titles(), SizeIs(titlesAfterReads[reads])) << reads << " reads";
  }
}

TEST_F(WindowTitlesTest, TrustIsNotAskedFor) {
  showWindows(1);
  EXPECT_THAT(titles(), SizeIs(2));
  EXPECT_EQ(accessibility.queries, 0);
}

}  // namespace
}  // namespace notewick
