#include "platform/linux/titles/screen_snapshot.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

TEST(ScreenSnapshotTest, AWindowWhoseTitleCouldNotBeReadKeepsItsPlace) {
  const auto application = applicationOf({"Mail", std::nullopt, {"first", std::nullopt, "third"}});
  EXPECT_EQ(application->localizedName(), "Mail");
  EXPECT_EQ(application->focusedWindow(), nullptr);
  const auto windows = application->windows();
  ASSERT_EQ(windows.size(), 3U);
  EXPECT_EQ(windows[0]->title(), "first");
  EXPECT_EQ(windows[1]->title(), std::nullopt);
  EXPECT_EQ(windows[2]->title(), "third");
}

}  // namespace
}  // namespace notewick
