#include "detect/watch_log.h"

#include <gmock/gmock.h>

#include "app/constants.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WatchLogTest : public WorldTest {
 protected:
  void logHolds(std::size_t bytes) { files.put(WATCH_LOG, std::string(bytes - 1, 'x') + "\n"); }

  const std::string other = SUPPORT_DIR + "/other.log";
};

TEST_F(WatchLogTest, TheSupportFolderIsMadeWithTheFoldersAboveIt) {
  EXPECT_FALSE(files.folderExists(SUPPORT_DIR));
  ensureDirs();
  EXPECT_TRUE(files.folderExists(SUPPORT_DIR));
  ensureDirs();
  EXPECT_TRUE(files.folderExists(SUPPORT_DIR));
}

TEST_F(WatchLogTest, AFolderThatCannotBeMadeIsIgnored) {
  files.failWrites = true;
  ensureDirs();
  watchLog("lost");
  EXPECT_THAT(files.paths(), IsEmpty());
}

TEST_F(WatchLogTest, TheFirstEntryMakesTheFileOfOneLine) {
  ensureDirs();
  watchLog("seen");
  EXPECT_EQ(text("watch.log"), "09:00:00 seen\n");
}

TEST_F(WatchLogTest, EntriesFollowEachOther) {
  ensureDirs();
  watchLog("first");
  clock.setLocal({2024, 5, 2, 23, 59, 1});
  watchLog("second");
  EXPECT_EQ(text("watch.log"), "09:00:00 first\n23:59:01 second\n");
}

TEST_F(WatchLogTest, ALogOf500000BytesGrows) {
  logHolds(500'000);
  watchLog("seen");
  EXPECT_EQ(text("watch.log").size(), 500'000 + std::string("09:00:00 seen\n").size());
}

TEST_F(WatchLogTest, ALogOf500001BytesStartsAnew) {
  logHolds(500'001);
  watchLog("seen");
  EXPECT_EQ(text("watch.log"), "09:00:00 seen\n");
}

TEST_F(WatchLogTest, ALineFeedInAMessageIsWrittenAsItIs) {
  ensureDirs();
  watchLog("one\ntwo");
  EXPECT_EQ(text("watch.log"), "09:00:00 one\ntwo\n");
}

TEST_F(WatchLogTest, TheFirstLineGoesThroughATemporaryFile) {
  ensureDirs();
  deeds.clear();
  appendLine("first", other);
  appendLine("second", other);
  EXPECT_THAT(deeds, ElementsAre("replace atomically " + other, "append " + other));
}

TEST_F(WatchLogTest, AnEntryIsLostWhenTheFolderIsGone) {
  ensureDirs();
  files.removeFolder(SUPPORT_DIR);
  watchLog("lost");
  EXPECT_THAT(files.paths(), IsEmpty());
  EXPECT_FALSE(files.folderExists(SUPPORT_DIR));
}

TEST_F(WatchLogTest, ALogThatCannotBeOpenedIsNotReplaced) {
  files.put(WATCH_LOG, "09:00:00 kept\n");
  files.unreadable.insert(WATCH_LOG);
  watchLog("lost");
  EXPECT_THAT(deeds, ElementsAre("append " + WATCH_LOG));
  EXPECT_EQ(text("watch.log"), "09:00:00 kept\n");
}

TEST_F(WatchLogTest, AFullDiskLosesTheEntryOnly) {
  ensureDirs();
  watchLog("kept");
  files.failWrites = true;
  watchLog("lost");
  EXPECT_EQ(text("watch.log"), "09:00:00 kept\n");
}

}  // namespace
}  // namespace notewick
