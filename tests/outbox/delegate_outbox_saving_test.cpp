#include "model/local_store.h"
#include "tests/outbox/outbox_world.h"

namespace notewick {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// When the list of notes is written to its file.
class OutboxSavingTest : public OutboxTest {
 protected:
  OutboxSavingTest() { hasWaiting({"one", "two", "three"}); }

  /// How often the file was written since the notes began to wait.
  [[nodiscard]] std::size_t writes() const { return files.writesTo(outboxFile()); }
};

TEST_F(OutboxSavingTest, SuccessesOfTheSameMomentAreSavedTogetherWithin20Milliseconds) {
  flush();
  EXPECT_THAT(waiting(), IsEmpty());
  advance(0.019);
  EXPECT_EQ(writes(), 0u);
  advance(0.001);
  EXPECT_EQ(writes(), 1u);
  EXPECT_THAT(stored(), IsEmpty());
}

TEST_F(OutboxSavingTest, FailedAttemptsAreSavedTogetherWithinASecond) {
  service.isUnreachable("offline");
  flush();
  advance(0.999);
  EXPECT_EQ(writes(), 0u);
  advance(0.001);
  EXPECT_EQ(writes(), 1u);
  EXPECT_EQ(stored().front().attempts, app().outbox.front().attempts);
}

TEST_F(OutboxSavingTest, AttemptsThatFailForWantOfASignInMayWaitAsWell) {
  service.backend.revokeTokens();
  flush();
  flush();
  EXPECT_EQ(app().outbox.front().lastError, "Session expired — please sign in again");
  EXPECT_EQ(writes(), 0u);
  advance(1);
  EXPECT_EQ(writes(), 1u);
}

TEST_F(OutboxSavingTest, ANewNoteSavesWhatWaits) {
  flush();
  service.isUnreachable("offline");
  sends("new");
  EXPECT_EQ(writes(), 1u);
  EXPECT_THAT(stored(), SizeIs(1));
  advance(0.02);
  EXPECT_EQ(writes(), 1u) << "the successes need no save of their own any longer";
}

TEST_F(OutboxSavingTest, QuittingWritesWhatWaitsAndNothingElse) {
  quit();
  EXPECT_EQ(writes(), 0u);
  launch();
  trace.clear();
  quit();
  EXPECT_EQ(writes(), 1u);
  EXPECT_THAT(stored(), IsEmpty());
}

TEST_F(OutboxSavingTest, AKillBeforeTheSaveSendsNotesTwiceAndLosesNone) {
  flush();
  kill();
  EXPECT_THAT(stored(), SizeIs(3));
  launch();
  advance(1);
  EXPECT_THAT(service.backend.notes, SizeIs(6));
  EXPECT_THAT(stored(), IsEmpty());
}

}  // namespace
}  // namespace notewick
