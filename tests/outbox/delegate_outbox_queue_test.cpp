#include <gmock/gmock.h>

#include "model/json_text.h"
#include "model/local_store.h"
#include "tests/outbox/outbox_world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- Many notes ----------------------------------------------------------------------------------

class LongQueueTest : public OutboxTest {
 protected:
  static constexpr int NOTES = 200;

  /// The program starts with so many notes from an earlier day, and without an access token.
  void startsWithManyNotes() {
    service.isUnreachable("offline");
    for (int note = 0; note < NOTES; ++note) sends("note " + std::to_string(note));
    quit();
    service.recovers();
    forgetThePast();
    launch();
  }
};

TEST_F(LongQueueTest, SixAreUnderWayAtATime) {
  service.isUnreachable("offline");
  for (int note = 0; note < 20; ++note) sendsAndWaits("note");
  service.recovers();
  service.holdsAnswers();
  forgetThePast();
  flush();
  EXPECT_THAT(service.requestsTo(CAPTURE_PATH), SizeIs(6));
  EXPECT_THAT(app().sendingIds, SizeIs(20)) << "they all had their try";
  service.releases(0);
  EXPECT_THAT(service.requestsTo(CAPTURE_PATH), SizeIs(7));
  service.releasesAll();
  EXPECT_THAT(waiting(), IsEmpty());
}

TEST_F(LongQueueTest, ItDrainsAfterAStartWithNoMoreThanSixRefreshes) {
  startsWithManyNotes();
  EXPECT_THAT(waiting(), IsEmpty());
  EXPECT_THAT(service.backend.notes, SizeIs(NOTES));
  EXPECT_LE(service.requestsTo(REFRESH_PATH).size(), 6u);
  EXPECT_THAT(service.requestsTo(CAPTURE_PATH), SizeIs(NOTES));
}

TEST_F(LongQueueTest, ASignInHasItAllSent) {
  service.isUnreachable("offline");
  for (int note = 0; note < NOTES; ++note) sendsAndWaits("note");
  service.recovers();
  statusItem().choose("Sign out of VELK");
  advance(120);
  signInWithPanel();
  EXPECT_THAT(waiting(), IsEmpty());
  EXPECT_THAT(service.backend.notes, SizeIs(NOTES));
}

TEST_F(LongQueueTest, NotesThatWaitForTheirTurnAtASignOutStayForTheNextSignIn) {
  service.isUnreachable("offline");
  for (int note = 0; note < 10; ++note) sendsAndWaits("note");
  service.recovers();
  service.holdsAnswers();
  flush();
  statusItem().choose("Sign out of VELK");
  loop.runPosted();
  EXPECT_THAT(app().sendingIds, SizeIs(6));
  service.releasesAll();
  EXPECT_THAT(waiting(), SizeIs(4));
  EXPECT_EQ(app().outbox.front().lastError, "Signed out meanwhile");
  signInWithPanel();
  EXPECT_THAT(waiting(), IsEmpty());
  EXPECT_THAT(service.backend.notes, SizeIs(10));
}

// --- When the list is saved ----------------------------------------------------------------------

class SavingTest : public OutboxTest {
 protected:
  SavingTest() { loop.fireLate(0); }

  [[nodiscard]] std::size_t writes() const { return files.writesTo(outboxFile()) - before_; }
  void countFromNow() { before_ = files.writesTo(outboxFile()); }

  /// Notes that wait, of which the service takes all when it is asked next.
  void hasWaiting(int notes) {
    service.isUnreachable("offline");
    for (int note = 0; note < notes; ++note) sendsAndWaits("note " + std::to_string(note));
    advance(1);
    service.recovers();
    countFromNow();
  }

 private:
  std::size_t before_ = 0;
};

TEST_F(SavingTest, ANoteIsSavedBeforeItsRequestStarts) {
  service.onRequest = [this] { EXPECT_THAT(stored(), SizeIs(1)); };
  sends("one");
  EXPECT_THAT(service.requestsTo(CAPTURE_PATH), SizeIs(1));
}

TEST_F(SavingTest, SuccessesOfTheSameMomentAreSavedTogether) {
  hasWaiting(5);
  flush();
  EXPECT_THAT(waiting(), IsEmpty());
  EXPECT_EQ(writes(), 0u);
  advance(0.02);
  EXPECT_EQ(writes(), 1u);
  EXPECT_THAT(stored(), IsEmpty());
  advance(10);
  EXPECT_EQ(writes(), 1u);
}

TEST_F(SavingTest, FailedAttemptsAreSavedTogetherWithinASecond) {
  hasWaiting(5);
  service.isUnreachable("offline");
  flush();
  EXPECT_EQ(writes(), 0u);
  EXPECT_EQ(app().outbox.front().attempts, 2 + 4) << "each new note tried the older ones again";
  advance(1);
  EXPECT_EQ(writes(), 1u);
  EXPECT_EQ(stored().front().attempts, 6);
}

TEST_F(SavingTest, AttemptsThatFailForWantOfASignInMayWaitAsWell) {
  service.backend.revokeTokens();
  service.answers(CAPTURE_PATH, 401);
  sendsAndWaits("one");
  advance(1);
  countFromNow();
  flush();
  EXPECT_EQ(app().outbox.front().lastError, "Session expired — please sign in again");
  EXPECT_EQ(writes(), 0u);
  advance(1);
  EXPECT_EQ(writes(), 1u);
}

TEST_F(SavingTest, ANewNoteSavesWhatWaits) {
  hasWaiting(1);
  flush();
  service.isUnreachable("offline");
  sends("new");
  EXPECT_EQ(writes(), 1u);
  EXPECT_THAT(stored(), SizeIs(1));
  advance(0.02);
  EXPECT_EQ(writes(), 1u) << "the success needs no save of its own any longer";
}

TEST_F(SavingTest, QuittingWritesWhatWaitsOnce) {
  hasWaiting(3);
  flush();
  quit();
  EXPECT_EQ(writes(), 1u);
  EXPECT_THAT(stored(), IsEmpty());
}

TEST_F(SavingTest, QuittingWithNothingWaitingWritesNothing) {
  hasWaiting(3);
  quit();
  EXPECT_EQ(writes(), 0u);
}

TEST_F(SavingTest, AKillBeforeTheSaveSendsANoteTwiceAndLosesNone) {
  hasWaiting(3);
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
