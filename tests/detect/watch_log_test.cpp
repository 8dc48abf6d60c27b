#include "detect/watch_log.h"

#include <gmock/gmock.h>

#include "app/constants.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using WatchLogTest = WorldTest;

TEST_F(WatchLogTest, TheSupportFolderIsMadeWithTheFoldersAboveItAndKeptPrivate) {
  ensureDirs();
  EXPECT_THAT(trace, ElementsAre("create folders " + SUPPORT_DIR, "keep private " + SUPPORT_DIR));
  EXPECT_TRUE(files.folderExists(SUPPORT_DIR));
}

TEST_F(WatchLogTest, EntriesFollowEachOther) {
  ensureDirs();
  watchLog("first");
  clock.setLocal({2024, 5, 2, 23, 59, 1});
  watchLog("one\ntwo");
  EXPECT_EQ(text("watch.log"), "09:00:00 first\n23:59:01 one\ntwo\n");
}

TEST_F(WatchLogTest, ALogOfMoreThan500000BytesStartsAnew) {
  const std::string largest(500'000, 'x');
  files.put(WATCH_LOG, largest);
  watchLog("seen");
  EXPECT_EQ(text("watch.log"), largest + "09:00:00 seen\n");
  files.put(WATCH_LOG, largest + "x");
  watchLog("seen");
  EXPECT_EQ(text("watch.log"), "09:00:00 seen\n");
}

TEST_F(WatchLogTest, TheFirstLineGoesThroughATemporaryFile) {
  const std::string other = SUPPORT_DIR + "/other.log";
  ensureDirs();
  trace.clear();
  appendLine("first", other);
  appendLine("second", other);
  EXPECT_THAT(trace, ElementsAre("replace atomically " + other, "append " + other));
}

TEST_F(WatchLogTest, WithoutTheFolderAnEntryIsLost) {
  files.failWrites = true;
  ensureDirs();
  files.failWrites = false;
  watchLog("lost");
  EXPECT_THAT(files.paths(), IsEmpty());
  EXPECT_FALSE(files.folderExists(SUPPORT_DIR));
}

TEST_F(WatchLogTest, ALogThatCannotBeOpenedIsNotReplaced) {
  files.put(WATCH_LOG, "09:00:00 kept\n");
  files.unreadable.insert(WATCH_LOG);
  watchLog("lost");
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
