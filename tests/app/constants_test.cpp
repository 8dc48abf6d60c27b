#include "app/constants.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

TEST(Constants, FoldersFollowTheHomeFolderAsItStands) {
  setConstants("/home/ada lovelace %20");
  EXPECT_EQ(SUPPORT_DIR, "/home/ada lovelace %20/Library/Application Support/VELKNotewick");
  EXPECT_EQ(WATCH_LOG, SUPPORT_DIR + "/watch.log");
}

}  // namespace
}  // namespace notewick
