#include "app/constants.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

TEST(Constants, HaveTheirValues) {
  EXPECT_EQ(DEFAULT_BASE_URL, "https://velk.example");
  EXPECT_EQ(KEYCHAIN_SERVICE, "tools.velk.notewick");
  EXPECT_EQ(KEYCHAIN_ACCOUNT, "refresh-token");
  EXPECT_EQ(SAMPLE_INTERVAL, 15.0);
  EXPECT_EQ(SESSION_GAP, 600.0);
  EXPECT_EQ(MIN_SIGHTINGS, 3);
  EXPECT_EQ(MIN_SPAN, 45.0);
  EXPECT_EQ(OUTBOX_RETRY_INTERVAL, 60.0);
}

TEST(Constants, FoldersFollowTheHomeFolder) {
  setConstants("/home/ada");
  EXPECT_EQ(SUPPORT_DIR, "/home/ada/Library/Application Support/VELKNotewick");
  EXPECT_EQ(WATCH_LOG, SUPPORT_DIR + "/watch.log");
}

TEST(Constants, BlanksInTheHomeFolderStayAsTheyAre) {
  setConstants("/home/ada lovelace %20");
  EXPECT_EQ(SUPPORT_DIR, "/home/ada lovelace %20/Library/Application Support/VELKNotewick");
}

}  // namespace
}  // namespace notewick
