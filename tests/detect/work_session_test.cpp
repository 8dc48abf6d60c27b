#include "detect/work_session.h"

#include <gmock/gmock.h>

#include <limits>

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A session seen at these seconds.
WorkSession seenAt(const std::vector<double>& moments) {
  WorkSession session("Lena O'Keefe", Date(moments.front()));
  for (std::size_t index = 1; index < moments.size(); ++index)
    session.addSighting(Date(moments[index]));
  return session;
}

TEST(WorkSession, BeginsWithOneSighting) {
  const auto session = seenAt({100});
  EXPECT_EQ(session.participant, "Lena O'Keefe");
  EXPECT_EQ(session.firstSeen, Date(100));
  EXPECT_EQ(session.lastSeen, Date(100));
  EXPECT_EQ(session.sightings, 1);
  EXPECT_THAT(session.evidence, IsEmpty());
}

TEST(WorkSession, ASightingMovesTheEndOnly) {
  const auto session = seenAt({100, 115, 700});
  EXPECT_EQ(session.firstSeen, Date(100));
  EXPECT_EQ(session.lastSeen, Date(700));
  EXPECT_EQ(session.sightings, 3);
}

TEST(WorkSession, MinutesAreSightingsRoundedUpAtLeastOneWhateverTheSpan) {
  auto session = seenAt({0, 100'000});
  for (const auto& [sightings, minutes] :
       {std::pair(0, 1), {1, 1}, {4, 1}, {5, 2}, {8, 2}, {9, 3}, {244, 61}}) {
    session.sightings = sightings;
    EXPECT_EQ(session.activeMinutes(), minutes) << sightings << " sightings";
  }
}

TEST(WorkSession, KeepsThreeDistinctTitlesInOrder) {
  auto session = seenAt({0});
  for (const auto* const title : {"b", "a", "b", "", "c", "d", "a"})
    addEvidence(title, session.evidence);
  EXPECT_THAT(session.evidence, ElementsAre("b", "a", "c"));
}

TEST(WorkSession, EndsAfterAnAbsenceOfMoreThanTenMinutes) {
  const auto session = seenAt({100});
  EXPECT_FALSE(session.hasEnded(Date(0))) << "the clock was set back";
  EXPECT_FALSE(session.hasEnded(Date(700)));
  EXPECT_TRUE(session.hasEnded(Date(700.001)));
}

TEST(WorkSession, CountsAsWorkFromThreeSightingsOver45Seconds) {
  EXPECT_TRUE(seenAt({0, 15, 45}).countsAsWork());
  EXPECT_FALSE(seenAt({0, 15, 44.999}).countsAsWork());
  EXPECT_FALSE(seenAt({0, 60}).countsAsWork());
}

TEST(WorkSessionDeathTest, ACountBeyond64BitsIsFatal) {
  auto session = seenAt({0});
  session.sightings = std::numeric_limits<std::int64_t>::max();
  EXPECT_EXIT(session.addSighting(Date(1)), testing::ExitedWithCode(1), "64 bits");
}

}  // namespace
}  // namespace notewick
