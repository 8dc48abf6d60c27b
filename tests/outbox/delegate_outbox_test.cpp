#include <limits>

#include "tests/outbox/outbox_world.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- Queueing ------------------------------------------------------------------------------------

TEST_F(OutboxTest, ANoteIsStoredAndLoggedBeforeItIsSent) {
  std::vector<OutboxItem> storedThen;
  service.onRequest = [&] {
    storedThen = stored();
    EXPECT_EQ(text("captures-2024-05-02.log"),
              "09:00 · Tobias Hargreave · 30 min · 2024-05-01 · Phoned\n");
  };
  sends("Phoned");
  ASSERT_THAT(storedThen, SizeIs(1));
  const auto item = storedThen.front();
  EXPECT_EQ(item.id, FakeUuidSource::nth(1));
  EXPECT_EQ(item.participantId, "1");
  EXPECT_EQ(item.participantName, "Tobias Hargreave");
  EXPECT_EQ(item.input, "Phoned");
  EXPECT_EQ(item.minutes, 30);
  EXPECT_EQ(item.sessionDate, "2024-05-01");
  EXPECT_EQ(item.attempts, 0);
  EXPECT_EQ(item.lastError, std::nullopt);
}

TEST_F(OutboxTest, ANoteIsSavedThenShownThenSent) {
  trace.clear();
  service.onRequest = [this] { trace.push_back("send"); };
  sends("Phoned");
  EXPECT_THAT(takeTrace(),
              ElementsAre("replace outbox.json", "replace atomically captures-2024-05-02.log",
                          "menu", "widget", "send"));
  loop.runPosted();
  EXPECT_THAT(takeTrace(), ElementsAre("menu", "widget", "notify Captured — Tobias Hargreave"));
  advance(0.02);
  EXPECT_THAT(takeTrace(), ElementsAre("replace outbox.json"));
}

TEST_F(OutboxTest, ANoteCountsInMenuAndWidgetUntilTheServiceHasIt) {
  service.holdsAnswers();
  sends("Phoned");
  EXPECT_EQ(statusItem().title, " VELK (1)");
  EXPECT_EQ(widget().status, "1 queued — will retry");
  service.releasesAll();
  EXPECT_EQ(statusItem().title, " VELK");
  EXPECT_EQ(widget().status, "");
}

TEST_F(OutboxTest, WithoutAWidgetNotesAreSentAsWell) {
  defaults.setBoolean("VELKWidgetVisible", false);
  restart();
  sendsAndWaits("Phoned");
  EXPECT_THAT(service.backend.notes, SizeIs(1));
  EXPECT_EQ(views.quickNote, nullptr);
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
  EXPECT_EQ(stored()[0].input, "one");
  EXPECT_EQ(stored()[1].input, "two");
  app().flushOutbox();
  const auto requests = service.requestsTo(CAPTURE_PATH);
  ASSERT_THAT(requests, SizeIs(2));
  EXPECT_EQ(requests[0].json(), json({{"participantId", "1"},
                                      {"input", "one"},
                                      {"durationMinutes", 30},
                                      {"sessionDate", "2024-05-01"}}));
  EXPECT_EQ(requests[1].json()["input"], "two");
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

TEST_F(OutboxTest, AnEmptyOutboxSendsNothing) {
  advance(600);
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(OutboxTest, TheTimerTriesEveryMinute) {
  service.isUnreachable("offline");
  advance(1);
  sendsAndWaits("one");
  advance(58);
  EXPECT_EQ(app().outbox.front().attempts, 1);
  advance(1);
  EXPECT_EQ(app().outbox.front().attempts, 2);
  advance(60);
  EXPECT_EQ(app().outbox.front().attempts, 3);
}

TEST_F(OutboxTest, ACountOfAttemptsThatIsFullStaysFull) {
  hasWaiting({"one"});
  app().outbox.front().attempts = std::numeric_limits<std::int64_t>::max();
  service.isUnreachable("offline");
  flush();
  EXPECT_EQ(app().outbox.front().attempts, std::numeric_limits<std::int64_t>::max());
}

// --- Success -------------------------------------------------------------------------------------

TEST_F(OutboxTest, ACapturedNoteIsAnnounced) {
  sendsAndWaits("Phoned");
  EXPECT_THAT(notifier.shown,
              ElementsAre(Notification{"Captured — Tobias Hargreave",
                                       "Parked in VELK (30 min). Write it up from your case-notes "
                                       "page when you're ready."}));
}

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

}  // namespace
}  // namespace notewick
