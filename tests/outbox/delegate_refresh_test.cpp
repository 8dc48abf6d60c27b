#include "app/entry.h"
#include "client/velk_client.h"
#include "model/json_text.h"
#include "tests/outbox/outbox_world.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class RefreshingTest : public OutboxTest {
 protected:
  void refresh(bool silent) {
    app().refreshParticipants(silent);
    loop.runPosted();
  }

  [[nodiscard]] std::vector<Participant> cached() const {
    return decodeRecords<Participant>(text("participants.json")).value();
  }
};

// --- An answer -----------------------------------------------------------------------------------

TEST_F(RefreshingTest, ASilentRefreshUpdatesListCacheAndMenu) {
  knows({"Zoe Abel"});
  refresh(true);
  EXPECT_EQ(app().participants, participantsNamed({"Zoe Abel"}));
  EXPECT_EQ(cached(), participantsNamed({"Zoe Abel"}));
  EXPECT_NE(statusItem().find("Watching · 1 participants"), nullptr);
  EXPECT_THAT(notifier.shown, IsEmpty());
}

TEST_F(RefreshingTest, TheListIsSavedThenShownAndItsNumberAnnounced) {
  statusItem().choose("Hide floating widget");
  knows({"Zoe Abel"});
  trace.clear();
  refresh(false);
  EXPECT_THAT(takeTrace(),
              ElementsAre("replace participants.json", "menu", "widget", "notify VELK Notewick"));
  EXPECT_EQ(notifier.shown.back().body, "Watching for work on 1 participants.");
}

TEST_F(RefreshingTest, NewNamesAreRecognisedAtTheNextSample) {
  knows({"Zoe Abel"});
  refresh(true);
  screen.show("Mail", {"Zoe Abel", "Tobias Hargreave"});
  samples(1);
  EXPECT_TRUE(app().sessions.contains("Zoe Abel"));
  EXPECT_FALSE(app().sessions.contains("Tobias Hargreave"));
}

TEST_F(RefreshingTest, AWidgetThatIsWantedIsShownWithTheNewNamesWithoutTheKeyboard) {
  widget().orderOut();
  knows({"Zoe Abel"});
  refresh(true);
  EXPECT_TRUE(widget().visible);
  EXPECT_FALSE(widget().key);
  EXPECT_THAT(widget().participants, ElementsAre("Zoe Abel"));
}

TEST_F(RefreshingTest, AHiddenWidgetGetsTheNewNamesAndStaysHidden) {
  statusItem().choose("Hide floating widget");
  knows({"Zoe Abel"});
  refresh(true);
  EXPECT_FALSE(widget().visible);
  EXPECT_THAT(widget().participants, ElementsAre("Zoe Abel"));
}

TEST_F(RefreshingTest, AWidgetThatIsNotWantedIsNotMade) {
  defaults.setBoolean("VELKWidgetVisible", false);
  restart();
  refresh(true);
  EXPECT_EQ(views.quickNote, nullptr);
}

TEST_F(RefreshingTest, AnAnswerAfterTheEndChangesNothing) {
  service.holdsAnswers();
  knows({"Zoe Abel"});
  app().refreshParticipants(false);
  delegate = nullptr;
  service.releasesAll();
  EXPECT_THAT(cached(), SizeIs(2));
  EXPECT_THAT(notifier.shown, IsEmpty());
}

// --- A failure -----------------------------------------------------------------------------------

TEST_F(RefreshingTest, ANetworkErrorIsOnlyLoggedAndKeepsTheList) {
  service.answers(PARTICIPANTS_PATH, 503);
  refresh(false);
  EXPECT_THAT(watchLogLines(),
              ElementsAre("09:00:00 api-error: Couldn't load participants: Server busy (503)"));
  EXPECT_THAT(notifier.shown, IsEmpty());
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_THAT(app().participants, SizeIs(2));
  EXPECT_THAT(cached(), SizeIs(2));
}

TEST_F(RefreshingTest, ARefusalIsLoggedAndAnnouncedAlsoWhereItIsSilent) {
  service.answers(PARTICIPANTS_PATH, 403, {{"error", "No access"}});
  refresh(true);
  EXPECT_THAT(watchLogLines(),
              ElementsAre("09:00:00 api-error: Couldn't load participants: No access"));
  EXPECT_THAT(notifier.shown,
              ElementsAre(Notification{"VELK Notewick", "Couldn't load participants: No access"}));
  EXPECT_EQ(views.signIn, nullptr);
}

TEST_F(RefreshingTest, AnExpiredSessionOpensTheSignInPanelInsteadAndKeepsTheList) {
  service.backend.revokeTokens();
  restart();
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_THAT(watchLogLines(), IsEmpty());
  EXPECT_THAT(notifier.shown, IsEmpty());
  EXPECT_THAT(app().participants, SizeIs(2));
  EXPECT_NE(statusItem().find("Sign in to VELK…"), nullptr);
}

TEST_F(RefreshingTest, NotBeingSignedInOpensItToo) {
  app().handleApiFailure(VELKError::notSignedIn(), "x");
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_THAT(watchLogLines(), IsEmpty());
  EXPECT_THAT(notifier.shown, IsEmpty());
}

TEST_F(RefreshingTest, EveryFailureEndsWithANewMenu) {
  for (const auto& error : {VELKError::api("x"), VELKError::network("x"), VELKError::notSignedIn(),
                            VELKError::sessionExpired()}) {
    trace.clear();
    app().handleApiFailure(error, "Context");
    EXPECT_EQ(trace.back(), "menu") << error.message();
  }
}

// --- Reloading and signing out -------------------------------------------------------------------

TEST_F(RefreshingTest, ReloadingAsksForTheListThenSendsTheOutbox) {
  hasWaiting({"Visited"});
  statusItem().choose("Reload participants");
  EXPECT_THAT(service.trail(),
              ElementsAre("GET /api/desktop/participants", "POST /api/desktop/case-notes/capture"));
}

class SigningOutTest : public RefreshingTest {
 protected:
  void signOut() { statusItem().choose("Sign out of VELK"); }
};

TEST_F(SigningOutTest, ForgetsTokenAndParticipantsThenShowsIt) {
  trace.clear();
  signOut();
  EXPECT_THAT(takeTrace(), ElementsAre("replace participants.json", "menu", "sign-in panel"));
  EXPECT_FALSE(VELKClient::shared().isSignedIn());
  EXPECT_THAT(app().participants, IsEmpty());
  EXPECT_EQ(parseJson(text("participants.json")), json::array());
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(statusItem().lines().front(), "Sign in to VELK…");
}

TEST_F(SigningOutTest, KeepsPendingsNotesAndSessions) {
  hasWaiting({"Visited"});
  app().pendings = {{"A", "Lena O'Keefe", "2024-05-02", Date(0), Date(0), 1, {}}};
  screen.show("Mail", {"Tobias Hargreave"});
  samples(1);
  signOut();
  EXPECT_THAT(app().pendings, SizeIs(1));
  EXPECT_THAT(waiting(), ElementsAre("Visited"));
  EXPECT_THAT(stored(), SizeIs(1));
  EXPECT_TRUE(app().sessions.contains("Tobias Hargreave"));
  EXPECT_EQ(statusItem().title, " VELK (2)");
}

TEST_F(SigningOutTest, TakesTheWidgetOffTheScreenButKeepsTheSetting) {
  signOut();
  EXPECT_FALSE(widget().visible);
  EXPECT_TRUE(app().widgetVisible());
}

TEST_F(SigningOutTest, WithoutAWidgetItWorksAsWell) {
  defaults.setBoolean("VELKWidgetVisible", false);
  restart();
  signOut();
  EXPECT_EQ(views.quickNote, nullptr);
  EXPECT_TRUE(signInPanel().visible);
}

}  // namespace
}  // namespace notewick
