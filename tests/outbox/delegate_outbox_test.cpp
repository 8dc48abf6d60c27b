#include <gmock/gmock.h>

#include <limits>

#include "model/json_text.h"
#include "tests/outbox/outbox_world.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- Queueing ------------------------------------------------------------------------------------

TEST_F(OutboxTest, ANoteIsStoredBeforeItIsSent) {
  std::vector<OutboxItem> storedThen;
  std::string loggedThen;
  service.onRequest = [&] {
    storedThen = stored();
    loggedThen = text("captures-2024-05-02.log");
  };
  sends("Phoned");
  EXPECT_EQ(loggedThen, "09:00 · Tobias Hargreave · 30 min · 2024-05-01 · Phoned\n");
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

TEST_F(OutboxTest, IsSavedThenShownThenTold) {
  trace.clear();
  sends("Phoned");
  EXPECT_THAT(takeTrace(),
              ElementsAre("replace outbox.json", "replace atomically captures-2024-05-02.log",
                          "menu", "widget"));
  loop.runPosted();
  EXPECT_THAT(takeTrace(), ElementsAre("menu", "widget", "notify Captured — Tobias Hargreave"));
  advance(0.02);
  EXPECT_THAT(takeTrace(), ElementsAre("replace outbox.json"));
}

TEST_F(OutboxTest, NewNotesGoToTheEnd) {
  service.isUnreachable("offline");
  sends("first");
  sends("second");
  EXPECT_THAT(waiting(), ElementsAre("first", "second"));
  EXPECT_EQ(stored()[0].input, "first");
  EXPECT_EQ(stored()[1].input, "second");
}

TEST_F(OutboxTest, ANoteShowsInMenuAndWidgetWhileItWaits) {
  service.holdsAnswers();
  sends("Phoned");
  EXPECT_NE(statusItem().find("1 note waiting to send to VELK"), nullptr);
  EXPECT_EQ(statusItem().title, " VELK (1)");
  EXPECT_EQ(widget().status, "1 queued — will retry");
  app().rebuildMenu();
  EXPECT_EQ(statusItem().title, " VELK (1)") << "on its way it counts as well";
}

TEST_F(OutboxTest, ANoteIsSentAtOnce) {
  sendsAndWaits("Phoned");
  ASSERT_THAT(service.backend.notes, SizeIs(1));
  EXPECT_EQ(service.backend.notes.front(), json({{"participantId", "1"},
                                                 {"input", "Phoned"},
                                                 {"durationMinutes", 30},
                                                 {"sessionDate", "2024-05-01"}}));
}

TEST_F(OutboxTest, WorksWithoutAWidget) {
  defaults.setBoolean("VELKWidgetVisible", false);
  restart();
  sendsAndWaits("Phoned");
  EXPECT_THAT(service.backend.notes, SizeIs(1));
  EXPECT_EQ(views.quickNote, nullptr);
}

// --- The captures log ----------------------------------------------------------------------------

TEST_F(OutboxTest, EachNoteIsALineOfTheDaysCapturesLog) {
  clock.setLocal({2024, 5, 2, 14, 5, 59});
  app().enqueueNote({"2", "Lena", "O'Keefe"}, "Phoned about the housing form", 30, "2024-05-02");
  EXPECT_EQ(text("captures-2024-05-02.log"),
            "14:05 · Lena O'Keefe · 30 min · 2024-05-02 · Phoned about the housing form\n");
}

TEST_F(OutboxTest, TheCapturesLogIsOfTheDayOfSendingNotOfTheWork) {
  sends("one");
  clock.setLocal({2024, 5, 3, 0, 0, 0});
  sends("two");
  EXPECT_EQ(text("captures-2024-05-02.log"),
            "09:00 · Tobias Hargreave · 30 min · 2024-05-01 · one\n");
  EXPECT_EQ(text("captures-2024-05-03.log"),
            "00:00 · Tobias Hargreave · 30 min · 2024-05-01 · two\n");
  EXPECT_EQ(files.contents(supportFile("captures-2024-05-01.log")), std::nullopt);
}

TEST_F(OutboxTest, ARetryWritesNoSecondLine) {
  service.isUnreachable("offline");
  sends("one");
  flush();
  flush();
  EXPECT_THAT(linesOf(text("captures-2024-05-02.log")), SizeIs(1));
}

// --- Flushing ------------------------------------------------------------------------------------

TEST_F(OutboxTest, TwoFlushesInQuickSuccessionSendEachNoteOnce) {
  service.isUnreachable("offline");
  sendsAndWaits("one");
  sendsAndWaits("two");
  service.recovers();
  forgetThePast();
  app().flushOutbox();
  app().flushOutbox();
  EXPECT_THAT(service.requestsTo(CAPTURE_PATH), SizeIs(2));
  loop.runPosted();
  EXPECT_THAT(service.backend.notes, SizeIs(2));
}

TEST_F(OutboxTest, ANoteUnderWayIsNotSentAgainByTheTimer) {
  service.holdsAnswers();
  sends("one");
  advance(180);
  EXPECT_THAT(service.requestsTo(CAPTURE_PATH), SizeIs(1));
}

TEST_F(OutboxTest, NotesTravelTogetherInTheirOrder) {
  service.isUnreachable("offline");
  for (const auto* const what : {"one", "two", "three"}) sendsAndWaits(what);
  service.recovers();
  service.holdsAnswers();
  forgetThePast();
  app().flushOutbox();
  const auto requests = service.requestsTo(CAPTURE_PATH);
  ASSERT_THAT(requests, SizeIs(3));
  EXPECT_EQ(requests[0].json()["input"], "one");
  EXPECT_EQ(requests[1].json()["input"], "two");
  EXPECT_EQ(requests[2].json()["input"], "three");
}

TEST_F(OutboxTest, ANewNoteDoesNotWaitForTheOneUnderWay) {
  service.holdsAnswers();
  sends("one");
  sends("two");
  EXPECT_EQ(service.heldAnswers(), 2u);
}

TEST_F(OutboxTest, AnEmptyOutboxSendsNothing) {
  flush();
  advance(600);
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(OutboxTest, TheTimerTriesEveryMinute) {
  service.isUnreachable("offline");
  advance(1);
  sendsAndWaits("one");
  EXPECT_EQ(app().outbox.front().attempts, 1);
  advance(58);
  EXPECT_EQ(app().outbox.front().attempts, 1);
  advance(1);
  EXPECT_EQ(app().outbox.front().attempts, 2);
  advance(60);
  EXPECT_EQ(app().outbox.front().attempts, 3);
}

TEST_F(OutboxTest, RetryNowTriesAtOnce) {
  service.isUnreachable("offline");
  sendsAndWaits("one");
  service.recovers();
  statusItem().choose("Retry now");
  loop.runPosted();
  EXPECT_THAT(service.backend.notes, SizeIs(1));
  EXPECT_THAT(waiting(), IsEmpty());
}

TEST_F(OutboxTest, ANoteIsTriedHoweverOftenItFailed) {
  service.isUnreachable("offline");
  sendsAndWaits("one");
  for (int flushes = 0; flushes < 200; ++flushes) flush();
  EXPECT_EQ(app().outbox.front().attempts, 201);
  service.recovers();
  flush();
  EXPECT_THAT(waiting(), IsEmpty());
}

TEST_F(OutboxTest, ACountOfAttemptsThatIsFullStaysFull) {
  service.isUnreachable("offline");
  sends("one");
  app().outbox.front().attempts = std::numeric_limits<std::int64_t>::max();
  loop.runPosted();
  EXPECT_EQ(app().outbox.front().attempts, std::numeric_limits<std::int64_t>::max());
}

// --- Success -------------------------------------------------------------------------------------

TEST_F(OutboxTest, ACapturedNoteLeavesOutboxFileMenuAndWidget) {
  sendsAndWaits("Phoned");
  EXPECT_THAT(waiting(), IsEmpty());
  advance(0.02);
  EXPECT_EQ(parseJson(text("outbox.json")), json::array());
  EXPECT_EQ(statusItem().find("Retry now"), nullptr);
  EXPECT_EQ(statusItem().title, " VELK");
  EXPECT_EQ(widget().status, "");
}

TEST_F(OutboxTest, ACapturedNoteIsTold) {
  sendsAndWaits("Phoned");
  EXPECT_THAT(notifier.shown,
              ElementsAre(Notification{"Captured — Tobias Hargreave",
                                       "Parked in VELK (30 min). Write it up from your case-notes "
                                       "page when you're ready."}));
}

TEST_F(OutboxTest, AnswersMayComeInAnyOrder) {
  service.holdsAnswers();
  for (const auto* const what : {"one", "two", "three"}) sends(what);
  service.releases(2);
  EXPECT_THAT(waiting(), ElementsAre("one", "two"));
  service.releases(0);
  EXPECT_THAT(waiting(), ElementsAre("two"));
  service.releases(0);
  EXPECT_THAT(waiting(), IsEmpty());
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
