#include "detect/pending_list.h"

#include <gmock/gmock.h>

#include <limits>

#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::FieldsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Titles = std::vector<std::string>;

class PendingListTest : public WorldTest {
 protected:
  /// A session of four sightings from 10 to 70 seconds has ended.
  void ends(const std::string& participant, const Titles& evidence = {},
            const std::string& day = "2024-05-02") {
    WorkSession session(participant, Date(10));
    session.lastSeen = Date(70);
    session.sightings = 4;
    session.evidence = evidence;
    promote(session, day, pendings);
  }

  static Pending stored(std::int64_t minutes, const Titles& evidence = {}) {
    return {"A", "Lena O'Keefe", "2024-05-02", Date(0), Date(1), minutes, evidence};
  }

  std::vector<Pending> pendings;
};

TEST_F(PendingListTest, AFirstSessionBecomesANewPending) {
  ends("Lena O'Keefe", {"Inbox", "Plan"});
  EXPECT_THAT(pendings,
              ElementsAre(FieldsAre(FakeUuidSource::nth(1), "Lena O'Keefe", "2024-05-02", Date(10),
                                    Date(70), 1, ElementsAre("Inbox", "Plan"))));
}

TEST_F(PendingListTest, ALaterSessionOfTheDayIsMerged) {
  pendings = {stored(3)};
  ends("Lena O'Keefe");
  EXPECT_THAT(pendings, ElementsAre(FieldsAre("A", "Lena O'Keefe", "2024-05-02", Date(0), Date(70),
                                              4, IsEmpty())));
}

TEST_F(PendingListTest, AnotherDayOrAnotherParticipantIsAnotherPending) {
  ends("Lena O'Keefe");
  ends("Lena O'Keefe", {}, "2024-05-03");
  ends("lena O'Keefe", {}, "2024-05-03");
  ASSERT_THAT(pendings, SizeIs(3));
  EXPECT_EQ(pendings[1].day, "2024-05-03");
  EXPECT_EQ(pendings[1].id, FakeUuidSource::nth(2));
  EXPECT_EQ(pendings[2].participant, "lena O'Keefe");
}

TEST_F(PendingListTest, TheFirstPendingOfThatDayTakesTheMerge) {
  pendings = {stored(1), stored(1)};
  ends("Lena O'Keefe");
  EXPECT_EQ(pendings[0].observedMinutes, 2);
  EXPECT_EQ(pendings[1].observedMinutes, 1);
}

TEST_F(PendingListTest, MergingFillsTheEvidenceUpToThreeTitles) {
  struct Merge {
    Titles before, session, after;
  };
  for (const auto& [before, session, after] :
       {Merge{{"a", "b"}, {"b", "new", "dropped"}, {"a", "b", "new"}},
        Merge{{"a", "b", "c"}, {"x", "a"}, {"a", "b", "c"}},
        Merge{{"a", "b", "c", "from a file"}, {"x"}, {"a", "b", "c", "from a file"}}}) {
    pendings = {stored(1, before)};
    ends("Lena O'Keefe", session);
    EXPECT_EQ(pendings.front().evidence, after);
  }
}

TEST_F(PendingListTest, MinutesFromAFileNeverOverflow) {
  const auto most = std::numeric_limits<std::int64_t>::max();
  pendings = {stored(most)};
  ends("Lena O'Keefe");
  EXPECT_EQ(pendings.front().observedMinutes, most);
}

}  // namespace
}  // namespace notewick
