#include <algorithm>
#include <limits>

#include "app/entry.h"
#include "tests/outbox/outbox_world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::FieldsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- Queueing ------------------------------------------------------------------------------------

TEST_F(OutboxTest, ANoteIsSavedThenShownThenSent) {
  service.onRequest = [this] { trace.push_back("send"); };
  sends("Phoned");
  EXPECT_THAT(takeTrace(),
              ElementsAre("replace outbox.json", "replace atomically captures-2024-05-02.log",
                          "menu", "widget", "send"));
  EXPECT_THAT(stored(), ElementsAre(FieldsAre(FakeUuidSource::nth(1), "1", "Tobias Hargreave",
                                              "Phoned", 30, "2024-05-01", 0, std::nullopt)));
  loop.runPosted();
  EXPECT_THAT(takeTrace(), ElementsAre("menu", "widget", "notify Captured — Tobias Hargreave"));
}

TEST_F(OutboxTest, TheCapturesLogIsOfTheDayOfQueueing) {
  sends("one");
  clock.setLocal({2024, 5, 3, 0, 0, 0});
  sends("two");
  flush();
  EXPECT_EQ(text("captures-2024-05-02.log"),
            "09:00 · Tobias Hargreave · 30 min · 2024-05-01 · one\n");
  EXPECT_EQ(text("captures-2024-05-03.log"),
            "00:00 · Tobias Hargreave · 30 min · 2024-05-01 · two\n");
}

// --- Flushing ------------------------------------------------------------------------------------

TEST_F(OutboxTest, WaitingNotesTravelTogetherInTheirOrder) {
  hasWaiting({"one", "two"});
  app().flushOutbox();
  ASSERT_THAT(service.requests, SizeIs(2));
  EXPECT_EQ(service.requests[0].json()["input"], "one");
  EXPECT_EQ(service.requests[1].json()["input"], "two");
}

TEST_F(OutboxTest, ANoteUnderWayIsNotSentAgain) {
  service.holdsAnswers();
  sends("one");
  app().flushOutbox();
  advance(180);
  EXPECT_THAT(service.requestsTo(CAPTURE_PATH), SizeIs(1));
  service.releasesAll();
  EXPECT_THAT(service.backend.notes, SizeIs(1));
}

TEST_F(OutboxTest, ACountOfAttemptsThatIsFullStaysFull) {
  hasWaiting({"one"});
  app().outbox.front().attempts = std::numeric_limits<std::int64_t>::max();
  service.isUnreachable("offline");
  flush();
  EXPECT_EQ(app().outbox.front().attempts, std::numeric_limits<std::int64_t>::max());
}

// --- Answers -------------------------------------------------------------------------------------

TEST_F(OutboxTest, AnAnswerConcernsItsOwnNoteWheneverItComes) {
  service.holdsAnswers();
  for (const auto* const what : {"one", "two", "three"}) sends(what);
  service.releases(2);
  EXPECT_THAT(waiting(), ElementsAre("one", "two"));
  service.releases(0);
  EXPECT_THAT(waiting(), ElementsAre("two"));
}

TEST_F(OutboxTest, EveryNoteOfTheSameIdLeavesTogether) {
  service.holdsAnswers();
  sends("one");
  app().outbox.push_back(app().outbox.front());
  service.releasesAll();
  EXPECT_THAT(waiting(), IsEmpty());
}

TEST_F(OutboxTest, APassingFailureIsShownButNotAnnounced) {
  hasWaiting({"one", "two"});
  service.isUnreachable("offline");
  flush();
  EXPECT_THAT(takeTrace(), ElementsAre("menu", "widget", "menu", "widget"));
}

TEST_F(OutboxTest, ARefusedNoteIsCountedSavedReportedAndDropped) {
  service.answers(CAPTURE_PATH, 422, {{"error", "Participant archived"}});
  sends("one");
  trace.clear();
  loop.runPosted();
  EXPECT_THAT(takeTrace(),
              ElementsAre("replace outbox.json", "replace atomically watch.log",
                          "notify VELK Notewick", "menu", "replace outbox.json", "menu", "widget"));
  const std::string report = "Note for Tobias Hargreave failed: Participant archived";
  EXPECT_THAT(notifier.shown, ElementsAre(Notification{"VELK Notewick", report}));
  EXPECT_THAT(watchLogLines(), ElementsAre("09:00:00 api-error: " + report));
  EXPECT_THAT(stored(), IsEmpty());
  EXPECT_EQ(statusItem().title, " VELK");
}

TEST_F(OutboxTest, ARefusalConcernsItsOwnNoteOnly) {
  hasWaiting({"one", "two"});
  service.answers(CAPTURE_PATH, 503);
  service.answers(CAPTURE_PATH, 400);
  flush();
  EXPECT_THAT(waiting(), ElementsAre("one"));
  EXPECT_EQ(app().outbox.front().lastError, "Server busy (503)");
}

TEST_F(OutboxTest, ANoteTakenAwayWhileUnderWayIsNotPutBackButItsRefusalReported) {
  service.answers(CAPTURE_PATH, 422);
  service.holdsAnswers();
  sends("one");
  app().outbox.clear();
  service.releasesAll();
  EXPECT_THAT(waiting(), IsEmpty());
  EXPECT_EQ(notifier.shown.back().body, "Note for Tobias Hargreave failed: Request failed (422)");
}

TEST_F(OutboxTest, AnOutboxThatCannotBeSavedIsSentAllTheSame) {
  files.failWrites = true;
  sends("one");
  loop.runPosted();
  EXPECT_THAT(service.backend.notes, SizeIs(1));
  EXPECT_THAT(waiting(), IsEmpty());
}

TEST_F(OutboxTest, AnAnswerAfterTheEndChangesNothing) {
  service.holdsAnswers();
  sends("one");
  delegate = nullptr;
  service.releasesAll();
  EXPECT_THAT(stored(), SizeIs(1));
  EXPECT_THAT(notifier.shown, IsEmpty());
}

// --- When the list is written to its file --------------------------------------------------------

class OutboxSavingTest : public OutboxTest {
 protected:
  OutboxSavingTest() { hasWaiting({"one", "two", "three"}); }

  /// How often the file was written since the notes began to wait.
  [[nodiscard]] auto writes() const {
    return std::ranges::count(trace, "replace " + supportFile("outbox.json"));
  }
  /// All changes so far are saved once, just before so many seconds have passed.
  void expectSavedTogetherWithin(double seconds) {
    advance(seconds - 0.001);
    EXPECT_EQ(writes(), 0);
    advance(0.001);
    EXPECT_EQ(writes(), 1);
  }
};

TEST_F(OutboxSavingTest, SuccessesOfTheSameMomentAreSavedTogetherWithin20Milliseconds) {
  flush();
  EXPECT_THAT(waiting(), IsEmpty());
  expectSavedTogetherWithin(0.02);
  EXPECT_THAT(stored(), IsEmpty());
}

TEST_F(OutboxSavingTest, FailedAttemptsAreSavedTogetherWithinASecond) {
  service.isUnreachable("offline");
  flush();
  expectSavedTogetherWithin(1);
  EXPECT_EQ(stored().front().attempts, app().outbox.front().attempts);
}

TEST_F(OutboxSavingTest, AttemptsThatFailForWantOfASignInMayWaitAsWell) {
  service.backend.revokeTokens();
  flush();
  flush();
  EXPECT_EQ(app().outbox.front().lastError, "Session expired — please sign in again");
  expectSavedTogetherWithin(1);
}

TEST_F(OutboxSavingTest, ANewNoteSavesWhatWaits) {
  flush();
  service.isUnreachable("offline");
  sends("new");
  EXPECT_EQ(writes(), 1);
  EXPECT_THAT(stored(), SizeIs(1));
  advance(0.02);
  EXPECT_EQ(writes(), 1) << "the successes need no save of their own any longer";
}

TEST_F(OutboxSavingTest, QuittingWritesWhatWaitsAndNothingElse) {
  quit();
  EXPECT_EQ(writes(), 0);
  launch();
  trace.clear();
  quit();
  EXPECT_EQ(writes(), 1);
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
