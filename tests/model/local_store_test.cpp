#include "model/local_store.h"

#include <gmock/gmock.h>

#include <limits>

#include "app/constants.h"
#include "tests/support/fake_files.h"

namespace notewick {
namespace {

using testing::ElementsAre;

class LocalStoreTest : public testing::Test {
 protected:
  LocalStoreTest() {
    setConstants("/home/ada");
    files.createFolders(SUPPORT_DIR);
    trace.clear();
  }

  /// What loading makes of a list that held something before.
  [[nodiscard]] std::vector<Participant> loaded() {
    auto list = kept;
    loadJSON(files, participantsCache(), list);
    return list;
  }
  [[nodiscard]] std::vector<Participant> loadedFrom(const std::string& text) {
    files.put(participantsCache(), text);
    return loaded();
  }

  Trace trace;
  FakeFiles files{"/home/ada", trace};
  const std::vector<Participant> kept = {{"9", "Was", "There"}};
  const std::vector<Participant> none;
};

TEST_F(LocalStoreTest, TheThreeFilesStandInTheSupportFolder) {
  setConstants("/home/grace");
  const std::string folder = "/home/grace/Library/Application Support/VELKNotewick";
  EXPECT_EQ(pendingFile(), folder + "/pending.json");
  EXPECT_EQ(outboxFile(), folder + "/outbox.json");
  EXPECT_EQ(participantsCache(), folder + "/participants.json");
}

TEST_F(LocalStoreTest, AFileThatIsMissingOrCannotBeReadLeavesTheListAsItWas) {
  EXPECT_EQ(loaded(), kept);
  files.unreadable.insert(participantsCache());
  EXPECT_EQ(loadedFrom("[]"), kept);
}

TEST_F(LocalStoreTest, AnUndecodableFileEmptiesTheListAndStays) {
  EXPECT_EQ(loadedFrom("{}"), none);
  EXPECT_EQ(loadedFrom("["), none);
  EXPECT_THAT(trace, testing::Each("read " + participantsCache()));
}

TEST_F(LocalStoreTest, WhatWasSavedInPlaceInOneCallIsLoaded) {
  const std::vector<Participant> saved = {{"1", "Lena", "O'Keefe"}, {"2", "René", "\"\\\n"}};
  saveJSON(files, participantsCache(), saved);
  EXPECT_THAT(trace, ElementsAre("replace " + participantsCache()));
  EXPECT_EQ(loaded(), saved);
  saveJSON(files, participantsCache(), none);
  EXPECT_EQ(files.contents(participantsCache()), "[]");
}

TEST_F(LocalStoreTest, AFailedWriteIsDropped) {
  files.failWrites = true;
  saveJSON(files, participantsCache(), kept);
  EXPECT_THAT(trace, ElementsAre("replace " + participantsCache())) << "tried once";
  EXPECT_EQ(files.contents(participantsCache()), std::nullopt);
}

TEST_F(LocalStoreTest, ASaveThatFindsTheFolderGoneMakesItAndTriesOnceMore) {
  files.removeFolder(SUPPORT_DIR);
  saveJSON(files, participantsCache(), kept);
  EXPECT_EQ(loaded(), kept);
  files.removeFolder(SUPPORT_DIR);
  files.failWrites = true;
  trace.clear();
  saveJSON(files, participantsCache(), kept);
  EXPECT_THAT(trace,
              ElementsAre("replace " + participantsCache(), "create folders " + SUPPORT_DIR));
}

TEST_F(LocalStoreTest, AListThatCannotBeEncodedLeavesTheFile) {
  const Date never(std::numeric_limits<double>::quiet_NaN());
  saveJSON(files, pendingFile(), std::vector<Pending>{{"A", "B", "C", never, Date(0), 1, {}}});
  EXPECT_THAT(trace, ElementsAre());
}

}  // namespace
}  // namespace notewick
