#include "model/local_store.h"

#include <gmock/gmock.h>

#include <limits>

#include "app/constants.h"
#include "model/json_text.h"
#include "tests/support/fake_files.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class LocalStoreTest : public testing::Test {
 protected:
  LocalStoreTest() {
    setConstants("/home/ada");
    files.put(SUPPORT_DIR + "/other", "");
  }

  [[nodiscard]] std::vector<Participant> loaded(const std::string& text) {
    files.put(participantsCache(), text);
    std::vector<Participant> list = kept;
    loadJSON(files, participantsCache(), list);
    return list;
  }

  Trace trace;
  FakeFiles files{"/home/ada", trace};
  const std::vector<Participant> kept = {{"9", "Was", "There"}};
};

TEST_F(LocalStoreTest, TheThreeFilesStandInTheSupportFolder) {
  EXPECT_EQ(pendingFile(), SUPPORT_DIR + "/pending.json");
  EXPECT_EQ(outboxFile(), SUPPORT_DIR + "/outbox.json");
  EXPECT_EQ(participantsCache(), SUPPORT_DIR + "/participants.json");
}

TEST_F(LocalStoreTest, PathsFollowTheSupportFolder) {
  setConstants("/home/grace");
  EXPECT_TRUE(pendingFile().starts_with("/home/grace/Library/Application Support/"));
}

TEST_F(LocalStoreTest, AMissingFileLeavesTheListAsItWas) {
  auto list = kept;
  loadJSON(files, participantsCache(), list);
  EXPECT_EQ(list, kept);
}

TEST_F(LocalStoreTest, AFileThatCannotBeReadLeavesTheListAsItWas) {
  files.unreadable.insert(participantsCache());
  EXPECT_EQ(loaded("[]"), kept);
}

TEST_F(LocalStoreTest, AnUndecodableFileEmptiesTheList) {
  EXPECT_THAT(loaded("{}"), IsEmpty());
  EXPECT_THAT(loaded(""), IsEmpty());
  EXPECT_THAT(loaded("["), IsEmpty());
  EXPECT_THAT(loaded(R"([{"id":"1","first_name":"A","last_name":"B"},{"id":"2"}])"), IsEmpty());
  EXPECT_THAT(loaded(std::string(100'000, '[')), IsEmpty());
}

TEST_F(LocalStoreTest, ReplacesTheListByTheFilesRecords) {
  EXPECT_THAT(loaded(R"([{"last_name":"B","id":"1","first_name":"A"}])"),
              ElementsAre(Participant{"1", "A", "B"}));
}

TEST_F(LocalStoreTest, LoadingWritesNothing) {
  for (const std::string text : {"{}", "", "[", "[]", "[ {\"id\": \"1\"} ]"}) {
    trace.clear();
    EXPECT_THAT(loaded(text), IsEmpty());
    EXPECT_THAT(trace, ElementsAre("read " + participantsCache()));
    EXPECT_EQ(files.contents(participantsCache()), text);
  }
}

TEST_F(LocalStoreTest, SavesInPlaceInOneCall) {
  saveJSON(files, participantsCache(), kept);
  EXPECT_THAT(trace, ElementsAre("replace " + participantsCache()));
}

TEST_F(LocalStoreTest, WhatWasSavedIsLoaded) {
  const std::vector<OutboxItem> saved = {
      {"A", "1", "Lena O'Keefe", "line\nbreak \"quoted\" \\ \u00e9", 30, "2024-05-02", 2, "busy"},
      {"B", "2", "Tobias Hargreave", "", 15, "2024-05-01"}};
  saveJSON(files, outboxFile(), saved);
  std::vector<OutboxItem> list;
  loadJSON(files, outboxFile(), list);
  ASSERT_THAT(list, SizeIs(2));
  EXPECT_EQ(list[0].input, saved[0].input);
  EXPECT_EQ(list[0].lastError, "busy");
  EXPECT_EQ(list[1].id, "B");
  EXPECT_FALSE(list[1].lastError);
}

TEST_F(LocalStoreTest, AnEmptiedListIsAnEmptyArrayInTheFile) {
  saveJSON(files, participantsCache(), kept);
  saveJSON(files, participantsCache(), std::vector<Participant>());
  EXPECT_EQ(parseJson(files.contents(participantsCache()).value()), json::array());
}

TEST_F(LocalStoreTest, AFailedWriteIsDropped) {
  files.put(participantsCache(), "[]");
  files.failWrites = true;
  saveJSON(files, participantsCache(), kept);
  EXPECT_EQ(files.contents(participantsCache()), "[]");
}

TEST_F(LocalStoreTest, AListThatCannotBeEncodedLeavesTheFile) {
  files.put(pendingFile(), "[]");
  const Date never(std::numeric_limits<double>::quiet_NaN());
  saveJSON(files, pendingFile(), std::vector<Pending>{{"A", "B", "C", never, Date(0), 1, {}}});
  EXPECT_EQ(files.contents(pendingFile()), "[]");
  EXPECT_EQ(files.writesTo(pendingFile()), 0u);
}

TEST_F(LocalStoreTest, AFolderThatIsGoneIsNotMade) {
  files.removeFolder(SUPPORT_DIR);
  saveJSON(files, participantsCache(), kept);
  EXPECT_FALSE(files.contents(participantsCache()));
  EXPECT_FALSE(files.folderExists(SUPPORT_DIR));
}

}  // namespace
}  // namespace notewick
