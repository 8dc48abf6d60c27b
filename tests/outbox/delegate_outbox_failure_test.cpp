#include "app/entry.h"
#include "client/velk_client.h"
#include "tests/outbox/outbox_world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- Failure -------------------------------------------------------------------------------------

TEST_F(OutboxTest, WithTheNetworkDownEachNotesAttemptsAreCountedAndNothingIsAnnounced) {
  service.isUnreachable("Could not connect");
  sendsAndWaits("one");
  sendsAndWaits("two");
  trace.clear();
  flush();
  EXPECT_THAT(takeTrace(), ElementsAre("menu", "widget", "menu", "widget"));
  advance(1);
  EXPECT_EQ(stored()[0].attempts, 3);
  EXPECT_EQ(stored()[1].attempts, 2);
  EXPECT_EQ(stored()[1].lastError, "Could not connect");
  EXPECT_THAT(notifier.shown, IsEmpty());
  EXPECT_EQ(views.signIn, nullptr);
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
  EXPECT_THAT(waiting(), IsEmpty());
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

TEST_F(OutboxTest, ANoteSurvivesAnExpiredSessionAndIsSentAfterTheSignIn) {
  hasWaiting({"one"});
  service.backend.revokeTokens();
  restart();
  ASSERT_THAT(waiting(), ElementsAre("one"));
  EXPECT_EQ(views.signInsMade, 1);
  signInWithPanel();
  EXPECT_THAT(waiting(), IsEmpty());
  EXPECT_THAT(service.backend.notes, SizeIs(1));
}

TEST_F(OutboxTest, ANoteSentSignedOutWaitsAndOpensTheSignInPanel) {
  VELKClient::shared().signOut();
  sendsAndWaits("one");
  advance(1);
  ASSERT_THAT(stored(), SizeIs(1));
  EXPECT_EQ(stored().front().attempts, 1);
  EXPECT_EQ(stored().front().lastError, "Not signed in");
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_THAT(notifier.shown, IsEmpty());
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
  sendsAndWaits("one");
  EXPECT_THAT(service.backend.notes, SizeIs(1));
  EXPECT_THAT(waiting(), IsEmpty());
}

// --- Restarts ------------------------------------------------------------------------------------

TEST_F(OutboxTest, WhatWasUnderWayAtTheEndIsSentAgainByTheNextStart) {
  service.holdsAnswers();
  sends("one");
  quit();
  service.releasesAll();
  launch();
  EXPECT_THAT(service.requestsTo(CAPTURE_PATH), SizeIs(2));
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

}  // namespace
}  // namespace notewick
