#include <gmock/gmock.h>

#include "app/entry.h"
#include "client/velk_client.h"
#include "model/json_text.h"
#include "model/local_store.h"
#include "tests/outbox/outbox_world.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- Failure -------------------------------------------------------------------------------------

TEST_F(OutboxTest, WithTheNetworkDownEveryFlushCountsAndNothingIsShown) {
  service.isUnreachable("Could not connect");
  sendsAndWaits("one");
  sendsAndWaits("two");
  EXPECT_EQ(app().outbox[0].attempts, 2);
  EXPECT_EQ(app().outbox[1].attempts, 1);
  flush();
  advance(1);
  EXPECT_EQ(stored()[0].attempts, 3);
  EXPECT_EQ(stored()[1].attempts, 2);
  EXPECT_EQ(stored()[1].lastError, "Could not connect");
  EXPECT_THAT(notifier.shown, IsEmpty());
  EXPECT_THAT(watchLogLines(), IsEmpty());
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_EQ(widget().status, "2 queued — will retry");
}

TEST_F(OutboxTest, ATryThatFailedBringsTheCountBackIntoTheWidget) {
  service.isUnreachable("offline");
  widget().type("Phoned");
  widget().pickMinutes(15);
  widget().pressSend();
  advance(4);
  EXPECT_EQ(widget().status, "") << "what was flashed is gone";
  flush();
  EXPECT_EQ(widget().status, "1 queued — will retry");
}

TEST_F(OutboxTest, ARefusedNoteIsGivenUpAndTold) {
  service.answers(CAPTURE_PATH, 422, {{"error", "Participant archived"}});
  sendsAndWaits("one");
  EXPECT_THAT(waiting(), IsEmpty());
  EXPECT_EQ(parseJson(text("outbox.json")), json::array());
  EXPECT_THAT(notifier.shown, ElementsAre(Notification{"VELK Notewick",
                                                       "Note for Tobias Hargreave failed: "
                                                       "Participant archived"}));
  EXPECT_THAT(
      watchLogLines(),
      ElementsAre("09:00:00 api-error: Note for Tobias Hargreave failed: Participant archived"));
  EXPECT_EQ(statusItem().title, " VELK");
  flush();
  EXPECT_THAT(service.requestsTo(CAPTURE_PATH), SizeIs(1));
}

TEST_F(OutboxTest, ARefusedNoteIsCountedAndSavedBeforeItIsDropped) {
  const auto writes = files.writesTo(outboxFile());
  service.answers(CAPTURE_PATH, 422);
  sendsAndWaits("one");
  EXPECT_EQ(files.writesTo(outboxFile()), writes + 3) << "queued, counted, dropped";
}

TEST_F(OutboxTest, ARefusalTouchesItsOwnNoteOnly) {
  service.isUnreachable("offline");
  sendsAndWaits("one");
  service.recovers();
  service.answers(CAPTURE_PATH, 503);
  service.answers(CAPTURE_PATH, 400);
  sendsAndWaits("two");
  EXPECT_THAT(waiting(), ElementsAre("one"));
  EXPECT_EQ(app().outbox.front().lastError, "Server busy (503)");
}

TEST_F(OutboxTest, ANoteSurvivesAnExpiredSessionAndIsSentAfterTheSignIn) {
  service.isUnreachable("offline");
  sendsAndWaits("one");
  service.recovers();
  service.backend.revokeTokens();
  restart();
  ASSERT_THAT(waiting(), ElementsAre("one"));
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(views.signInsMade, 1);
  signInWithPanel();
  EXPECT_THAT(waiting(), IsEmpty());
  EXPECT_THAT(service.backend.notes, SizeIs(1));
}

TEST_F(OutboxTest, ANoteSentSignedOutWaitsAndOpensTheSignInPanel) {
  VELKClient::shared().signOut();
  sendsAndWaits("one");
  ASSERT_THAT(waiting(), ElementsAre("one"));
  advance(1);
  EXPECT_EQ(stored().front().attempts, 1);
  EXPECT_EQ(stored().front().lastError, "Not signed in");
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_THAT(notifier.shown, IsEmpty());
  EXPECT_THAT(watchLogLines(), IsEmpty());
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(OutboxTest, ANoteThatFailedCanBeSentAgain) {
  service.answers(CAPTURE_PATH, 401);
  sendsAndWaits("one");
  EXPECT_EQ(app().outbox.front().lastError, "Authorisation expired — will retry");
  EXPECT_THAT(app().sendingIds, IsEmpty());
  flush();
  EXPECT_THAT(service.backend.notes, SizeIs(1));
}

TEST_F(OutboxTest, ANoteTakenAwayWhileUnderWayIsNotPutBack) {
  service.answers(CAPTURE_PATH, 503);
  service.holdsAnswers();
  sends("one");
  app().outbox.clear();
  const auto writes = files.writesTo(outboxFile());
  service.releasesAll();
  EXPECT_THAT(waiting(), IsEmpty());
  EXPECT_EQ(files.writesTo(outboxFile()), writes) << "nothing was counted";
}

TEST_F(OutboxTest, TheRefusalOfANoteTakenAwayIsStillTold) {
  service.answers(CAPTURE_PATH, 422);
  service.holdsAnswers();
  sends("one");
  app().outbox.clear();
  service.releasesAll();
  EXPECT_EQ(notifier.shown.back().body, "Note for Tobias Hargreave failed: Request failed (422)");
}

TEST_F(OutboxTest, AnOutboxThatCannotBeSavedIsSentAllTheSame) {
  files.failWrites = true;
  sendsAndWaits("one");
  EXPECT_THAT(service.backend.notes, SizeIs(1));
  EXPECT_THAT(waiting(), IsEmpty());
}

// --- Restarts ------------------------------------------------------------------------------------

TEST_F(OutboxTest, ARestartSendsWhatWaits) {
  service.isUnreachable("offline");
  sendsAndWaits("one");
  quit();
  service.recovers();
  launch();
  EXPECT_THAT(service.backend.notes, SizeIs(1));
  EXPECT_THAT(waiting(), IsEmpty());
}

TEST_F(OutboxTest, WhatWasUnderWayAtTheEndIsSentAgain) {
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
