#include "detect/work_session.h"

#include <gmock/gmock.h>

#include <limits>

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WorkSessionTest : public testing::Test {
 protected:
  /// A session seen at these seconds.
  static WorkSession seenAt(const std::vector<double>& moments) {
    WorkSession session("Lena O'Keefe", Date(moments.front()));
    for (std::size_t index = 1; index < moments.size(); ++index)
      session.addSighting(Date(moments[index]));
    return session;
  }

  static std::int64_t minutesOf(std::int64_t sightings) {
    auto session = seenAt({0});
    session.sightings = sightings;
    return session.activeMinutes();
  }
};

TEST_F(WorkSessionTest, BeginsWithOneSighting) {
  const auto session = seenAt({100});
  EXPECT_EQ(session.participant, "Lena O'Keefe");
  EXPECT_EQ(session.firstSeen, Date(100));
  EXPECT_EQ(session.lastSeen, Date(100));
  EXPECT_EQ(session.sightings, 1);
  EXPECT_THAT(session.evidence, IsEmpty());
}

TEST_F(WorkSessionTest, ASightingMovesTheEndOnly) {
  const auto session = seenAt({100, 115, 700});
  EXPECT_EQ(session.firstSeen, Date(100));
  EXPECT_EQ(session.lastSeen, Date(700));
  EXPECT_EQ(session.sightings, 3);
}

TEST_F(WorkSessionTest, MinutesAreSightingsRoundedUpAtLeastOne) {
  EXPECT_EQ(minutesOf(0), 1);
  EXPECT_EQ(minutesOf(1), 1);
  EXPECT_EQ(minutesOf(4), 1);
  EXPECT_EQ(minutesOf(5), 2);
  EXPECT_EQ(minutesOf(8), 2);
  EXPECT_EQ(minutesOf(9), 3);
  EXPECT_EQ(minutesOf(12), 3);
  EXPECT_EQ(minutesOf(240), 60);
}

TEST_F(WorkSessionTest, MinutesCountTimeOnScreenNotTheSpan) {
  EXPECT_EQ(seenAt({0, 500, 1000}).activeMinutes(), 1);
}

TEST_F(WorkSessionTest, KeepsThreeDistinctTitlesInOrder) {
  auto session = seenAt({0});
  for (const auto* const title : {"b", "a", "b", "", "c", "d", "a"}) session.addEvidence(title);
  EXPECT_THAT(session.evidence, ElementsAre("b", "a", "c"));
}

TEST_F(WorkSessionTest, EndsAfterMoreThanTheGap) {
  const auto session = seenAt({100});
  EXPECT_FALSE(session.hasEnded(Date(100)));
  EXPECT_FALSE(session.hasEnded(Date(700)));
  EXPECT_TRUE(session.hasEnded(Date(700.001)));
}

TEST_F(WorkSessionTest, ACorrectedClockDoesNotEndIt) {
  EXPECT_FALSE(seenAt({100'000}).hasEnded(Date(0)));
}

TEST_F(WorkSessionTest, CountsAsWorkFromThreeSightingsOver45Seconds) {
  EXPECT_TRUE(seenAt({0, 15, 30, 45}).countsAsWork());
  EXPECT_TRUE(seenAt({0, 15, 45}).countsAsWork());
  EXPECT_FALSE(seenAt({0, 15, 30}).countsAsWork());
  EXPECT_FALSE(seenAt({0, 15, 44.999}).countsAsWork());
  EXPECT_FALSE(seenAt({0, 60}).countsAsWork());
  EXPECT_FALSE(seenAt({0}).countsAsWork());
}

using WorkSessionDeathTest = WorkSessionTest;

TEST_F(WorkSessionDeathTest, ACountBeyond64BitsIsFatal) {
  auto session = seenAt({0});
  session.sightings = std::numeric_limits<std::int64_t>::max();
  EXPECT_EXIT(session.addSighting(Date(1)), testing::ExitedWithCode(1), "64 bits");
}

}  // namespace
}  // namespace notewick
