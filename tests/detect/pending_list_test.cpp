#include "detect/pending_list.h"

#include <gmock/gmock.h>

#include <limits>

#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class PendingListTest : public WorldTest {
 protected:
  static WorkSession session(const std::string& participant, double from, double to, int sightings,
                             const std::vector<std::string>& evidence) {
    WorkSession made(participant, Date(from));
    made.lastSeen = Date(to);
    made.sightings = sightings;
    made.evidence = evidence;
    return made;
  }

  std::vector<Pending> pendings;
};

TEST_F(PendingListTest, AFirstSessionBecomesANewPending) {
  promote(session("Lena O'Keefe", 10, 70, 5, {"Inbox", "Plan"}), "2024-05-02", pendings);
  ASSERT_THAT(pendings, SizeIs(1));
  const auto& pending = pendings.front();
  EXPECT_EQ(pending.id, FakeUuidSource::nth(1));
  EXPECT_EQ(pending.participant, "Lena O'Keefe");
  EXPECT_EQ(pending.day, "2024-05-02");
  EXPECT_EQ(pending.firstSeen, Date(10));
  EXPECT_EQ(pending.lastSeen, Date(70));
  EXPECT_EQ(pending.observedMinutes, 2);
  EXPECT_THAT(pending.evidence, ElementsAre("Inbox", "Plan"));
}

TEST_F(PendingListTest, OneSightingCreditsOneMinuteAndFiveCreditTwo) {
  promote(session("A A", 0, 0, 1, {}), "d", pendings);
  promote(session("B B", 0, 0, 5, {}), "d", pendings);
  EXPECT_EQ(pendings[0].observedMinutes, 1);
  EXPECT_EQ(pendings[1].observedMinutes, 2);
}

TEST_F(PendingListTest, ALaterSessionOfTheDayIsMerged) {
  promote(session("Lena O'Keefe", 10, 70, 5, {"Inbox"}), "2024-05-02", pendings);
  promote(session("Lena O'Keefe", 5000, 5060, 9, {"Plan"}), "2024-05-02", pendings);
  ASSERT_THAT(pendings, SizeIs(1));
  const auto& pending = pendings.front();
  EXPECT_EQ(pending.id, FakeUuidSource::nth(1));
  EXPECT_EQ(pending.firstSeen, Date(10));
  EXPECT_EQ(pending.lastSeen, Date(5060));
  EXPECT_EQ(pending.observedMinutes, 5);
  EXPECT_THAT(pending.evidence, ElementsAre("Inbox", "Plan"));
}

TEST_F(PendingListTest, EveryRoundingIsOfOneSession) {
  promote(session("A A", 0, 0, 5, {}), "d", pendings);
  promote(session("A A", 0, 0, 5, {}), "d", pendings);
  EXPECT_EQ(pendings.front().observedMinutes, 4);
}

TEST_F(PendingListTest, AnotherDayOrAnotherParticipantIsAnotherPending) {
  promote(session("Lena O'Keefe", 0, 60, 4, {}), "2024-05-02", pendings);
  promote(session("Lena O'Keefe", 0, 60, 4, {}), "2024-05-03", pendings);
  promote(session("lena O'Keefe", 0, 60, 4, {}), "2024-05-03", pendings);
  ASSERT_THAT(pendings, SizeIs(3));
  EXPECT_EQ(pendings[1].day, "2024-05-03");
  EXPECT_EQ(pendings[1].id, FakeUuidSource::nth(2));
  EXPECT_EQ(pendings[2].participant, "lena O'Keefe");
}

TEST_F(PendingListTest, TheFirstPendingOfThatDayTakesTheMerge) {
  pendings = {{"A", "Lena O'Keefe", "2024-05-02", Date(0), Date(1), 1, {}},
              {"B", "Lena O'Keefe", "2024-05-02", Date(0), Date(1), 1, {}}};
  promote(session("Lena O'Keefe", 5, 65, 4, {}), "2024-05-02", pendings);
  EXPECT_EQ(pendings[0].observedMinutes, 2);
  EXPECT_EQ(pendings[1].observedMinutes, 1);
}

TEST_F(PendingListTest, AFullEvidenceTakesNoTitleButMinutes) {
  promote(session("A A", 0, 60, 4, {"a", "b", "c"}), "d", pendings);
  promote(session("A A", 100, 160, 4, {"x", "a"}), "d", pendings);
  EXPECT_THAT(pendings.front().evidence, ElementsAre("a", "b", "c"));
  EXPECT_EQ(pendings.front().observedMinutes, 2);
  EXPECT_EQ(pendings.front().lastSeen, Date(160));
}

TEST_F(PendingListTest, MergingFillsEvidenceUpToThree) {
  promote(session("A A", 0, 60, 4, {"a", "b"}), "d", pendings);
  promote(session("A A", 100, 160, 4, {"b", "new", "dropped"}), "d", pendings);
  EXPECT_THAT(pendings.front().evidence, ElementsAre("a", "b", "new"));
}

TEST_F(PendingListTest, MoreEvidenceFromAFileIsKept) {
  pendings = {{"A", "A A", "d", Date(0), Date(1), 1, {"a", "b", "c", "e"}}};
  promote(session("A A", 0, 60, 4, {"x"}), "d", pendings);
  EXPECT_THAT(pendings.front().evidence, ElementsAre("a", "b", "c", "e"));
}

TEST_F(PendingListTest, MinutesFromAFileNeverOverflow) {
  const auto most = std::numeric_limits<std::int64_t>::max();
  pendings = {{"A", "A A", "d", Date(0), Date(1), most, {}}};
  promote(session("A A", 0, 60, 4, {}), "d", pendings);
  EXPECT_EQ(pendings.front().observedMinutes, most);
}

}  // namespace
}  // namespace notewick
