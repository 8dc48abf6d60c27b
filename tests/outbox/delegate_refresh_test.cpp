#include "app/entry.h"
#include "client/velk_client.h"
#include "tests/outbox/outbox_world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class RefreshingTest : public OutboxTest {
 protected:
  RefreshingTest() { knows({"Zoe Abel"}); }

  void refresh(bool silent) {
    app().refreshParticipants(silent);
    loop.runPosted();
  }

  [[nodiscard]] std::vector<Participant> cached() const {
    return decodeRecords<Participant>(text("participants.json")).value();
  }
};

// --- An answer -----------------------------------------------------------------------------------

TEST_F(RefreshingTest, TheListIsSavedThenShownAndItsNumberAnnouncedUnlessSilent) {
  statusItem().choose("Hide floating widget");
  trace.clear();
  refresh(true);
  EXPECT_THAT(takeTrace(), ElementsAre("replace participants.json", "menu", "widget"));
  EXPECT_EQ(app().participants, participantsNamed({"Zoe Abel"}));
  EXPECT_EQ(cached(), participantsNamed({"Zoe Abel"}));
  EXPECT_NE(statusItem().find("Watching · 1 participants"), nullptr);
  refresh(false);
  EXPECT_EQ(notifier.shown.back().body, "Watching for work on 1 participants.");
}

TEST_F(RefreshingTest, NewNamesAreRecognisedAtTheNextSample) {
  refresh(true);
  sees({"Zoe Abel", "Tobias Hargreave"});
  EXPECT_TRUE(app().sessions.contains("Zoe Abel"));
  EXPECT_FALSE(app().sessions.contains("Tobias Hargreave"));
}

TEST_F(RefreshingTest, TheWidgetGetsTheNewNamesAndIsShownWhereItIsWantedWithoutTheKeyboard) {
  for (const bool wanted : {true, false}) {
    app().setWidgetVisible(wanted);
    widget().orderOut();
    widget().setParticipants({}, std::nullopt);
    refresh(true);
    EXPECT_EQ(widget().visible, wanted);
    EXPECT_FALSE(widget().key);
    EXPECT_THAT(widget().participants, ElementsAre("Zoe Abel"));
  }
}

TEST_F(RefreshingTest, AnAnswerAfterTheEndChangesNothing) {
  service.holdsAnswers();
  app().refreshParticipants(false);
  delegate = nullptr;
  service.releasesAll();
  EXPECT_THAT(cached(), SizeIs(2));
  EXPECT_THAT(notifier.shown, IsEmpty());
}

// --- A failure -----------------------------------------------------------------------------------

TEST_F(RefreshingTest, ANetworkErrorIsOnlyLoggedARefusalAlsoAnnouncedAndTheListKept) {
  service.answers(PARTICIPANTS_PATH, 503);
  refresh(false);
  EXPECT_THAT(notifier.shown, IsEmpty());
  service.answers(PARTICIPANTS_PATH, 403, {{"error", "No access"}});
  refresh(true);
  EXPECT_THAT(notifier.shown,
              ElementsAre(Notification{"VELK Notewick", "Couldn't load participants: No access"}));
  EXPECT_THAT(watchLogLines(),
              ElementsAre("09:00:00 api-error: Couldn't load participants: Server busy (503)",
                          "09:00:00 api-error: Couldn't load participants: No access"));
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_THAT(app().participants, SizeIs(2));
  EXPECT_THAT(cached(), SizeIs(2));
}

TEST_F(RefreshingTest, WhereOnlyTheUserCanHelpTheSignInPanelSaysEnough) {
  for (const auto& error : {VELKError::sessionExpired(), VELKError::notSignedIn()}) {
    app().handleApiFailure(error, "Context");
    EXPECT_TRUE(signInPanel().visible) << error.message();
    signInPanel().orderOut();
  }
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

class SigningOutTest : public OutboxTest {
 protected:
  void signOut() { statusItem().choose("Sign out of VELK"); }
};

TEST_F(SigningOutTest, ForgetsTokenAndParticipantsHidesTheWidgetAndShowsIt) {
  signOut();
  EXPECT_THAT(takeTrace(), ElementsAre("replace participants.json", "menu", "sign-in panel"));
  EXPECT_FALSE(VELKClient::shared().isSignedIn());
  EXPECT_THAT(app().participants, IsEmpty());
  EXPECT_EQ(text("participants.json"), "[]");
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(statusItem().lines().front(), "Sign in to VELK…");
  EXPECT_FALSE(widget().visible);
  EXPECT_TRUE(app().widgetVisible()) << "the setting stays";
}

TEST_F(SigningOutTest, KeepsPendingsNotesAndSessions) {
  hasWaiting({"Visited"});
  app().pendings = {{"A", "Lena O'Keefe", "2024-05-02", Date(0), Date(0), 1, {}}};
  sees({"Tobias Hargreave"});
  signOut();
  EXPECT_THAT(stored(), SizeIs(1));
  EXPECT_TRUE(app().sessions.contains("Tobias Hargreave"));
  EXPECT_EQ(statusItem().title, " VELK (2)");
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
