#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "app/entry.h"
#include "model/json_text.h"
#include "model/local_store.h"
#include "model/record_json.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A program that has been running for a while: signed in, two participants known.
class RefreshingTest : public WorldTest {
 protected:
  RefreshingTest() {
    signIn();
    knows({"Tobias Hargreave", "Lena O'Keefe"});
    launch();
    forgetThePast();
  }

  void reload() {
    statusItem().choose("Reload participants");
    loop.runPosted();
  }

  void refreshSilently() {
    app().refreshParticipants(true);
    loop.runPosted();
  }

  [[nodiscard]] std::vector<Participant> cached() const {
    return decodeRecords<Participant>(text("participants.json")).value();
  }

  /// Names of two words, as many as wanted.
  static std::vector<std::string> names(int count) {
    std::vector<std::string> all;
    for (int number = 1; number <= count; ++number)
      all.push_back("Client " + std::to_string(number));
    return all;
  }
};

// --- An answer -----------------------------------------------------------------------------------

TEST_F(RefreshingTest, ASilentRefreshUpdatesListCacheAndMenuAndSaysNothing) {
  knows(names(12));
  refreshSilently();
  EXPECT_EQ(app().participants, participantsNamed(names(12)));
  EXPECT_EQ(cached(), participantsNamed(names(12)));
  EXPECT_NE(statusItem().find("Watching · 12 participants"), nullptr);
  EXPECT_THAT(notifier.shown, IsEmpty());
}

TEST_F(RefreshingTest, ARefreshByTheUserTellsTheNumber) {
  knows(names(12));
  reload();
  EXPECT_EQ(cached(), participantsNamed(names(12)));
  EXPECT_THAT(notifier.shown,
              ElementsAre(Notification{"VELK Notewick", "Watching for work on 12 participants."}));
}

TEST_F(RefreshingTest, TheListIsSavedThenShownThenTold) {
  statusItem().choose("Hide floating widget");
  trace.clear();
  reload();
  EXPECT_THAT(takeTrace(),
              ElementsAre("replace participants.json", "menu", "widget", "notify VELK Notewick"));
}

TEST_F(RefreshingTest, ThePluralIsUsedForEveryCount) {
  for (const int count : {0, 1}) {
    knows(names(count));
    reload();
    EXPECT_EQ(notifier.shown.back().body,
              "Watching for work on " + std::to_string(count) + " participants.");
  }
}

TEST_F(RefreshingTest, TheServicesOrderIsKept) {
  service.backend.participants = {{"9", "Zoe", "Abel"}, {"1", "Adam", "Best"}};
  refreshSilently();
  EXPECT_THAT(cached(),
              ElementsAre(Participant{"9", "Zoe", "Abel"}, Participant{"1", "Adam", "Best"}));
}

TEST_F(RefreshingTest, NewNamesAreRecognisedAtTheNextSample) {
  knows({"Zoe Abel"});
  refreshSilently();
  screen.show("Mail", {"Zoe Abel", "Tobias Hargreave"});
  samples(1);
  EXPECT_TRUE(app().sessions.contains("Zoe Abel"));
  EXPECT_FALSE(app().sessions.contains("Tobias Hargreave"));
}

TEST_F(RefreshingTest, AVisibleWidgetIsShownWithTheNewNames) {
  widget().orderOut();
  knows({"Zoe Abel"});
  refreshSilently();
  EXPECT_TRUE(widget().visible);
  EXPECT_FALSE(widget().key) << "it does not take the keyboard";
  EXPECT_THAT(widget().participants, ElementsAre("Zoe Abel"));
}

TEST_F(RefreshingTest, AHiddenWidgetIsRefreshedAndStaysHidden) {
  statusItem().choose("Hide floating widget");
  knows({"Zoe Abel"});
  refreshSilently();
  EXPECT_FALSE(widget().visible);
  EXPECT_THAT(widget().participants, ElementsAre("Zoe Abel"));
}

TEST_F(RefreshingTest, AWidgetThatIsNotWantedIsNotMade) {
  defaults.setBoolean("VELKWidgetVisible", false);
  restart();
  refreshSilently();
  EXPECT_EQ(views.quickNote, nullptr);
}

TEST_F(RefreshingTest, ACacheThatCannotBeWrittenDoesNoHarm) {
  files.failWrites = true;
  knows({"Zoe Abel"});
  refreshSilently();
  EXPECT_THAT(app().participants, SizeIs(1));
  EXPECT_THAT(notifier.shown, IsEmpty());
}

TEST_F(RefreshingTest, OfTwoRefreshesTheLastToAnswerWins) {
  service.answers(PARTICIPANTS_PATH, 200,
                  json::parse(R"({"participants":[{"id":"1","first_name":"A","last_name":"B"}]})"));
  service.answers(PARTICIPANTS_PATH, 200,
                  json::parse(R"({"participants":[{"id":"2","first_name":"C","last_name":"D"}]})"));
  service.holdsAnswers();
  app().refreshParticipants(true);
  app().refreshParticipants(true);
  service.releases(1);
  EXPECT_EQ(cached().front().name(), "C D");
  service.releases(0);
  EXPECT_EQ(cached().front().name(), "A B");
}

TEST_F(RefreshingTest, AnAnswerAfterTheEndChangesNothing) {
  const auto before = text("participants.json");
  service.holdsAnswers();
  knows({"Zoe Abel"});
  app().refreshParticipants(false);
  delegate = nullptr;
  service.releasesAll();
  EXPECT_EQ(text("participants.json"), before);
  EXPECT_THAT(notifier.shown, IsEmpty());
}

// --- A failure -----------------------------------------------------------------------------------

TEST_F(RefreshingTest, ANetworkErrorIsOnlyLogged) {
  const auto cache = text("participants.json");
  service.answers(PARTICIPANTS_PATH, 503);
  reload();
  EXPECT_THAT(watchLogLines(),
              ElementsAre("09:00:00 api-error: Couldn't load participants: Server busy (503)"));
  EXPECT_THAT(notifier.shown, IsEmpty());
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_THAT(app().participants, SizeIs(2));
  EXPECT_EQ(text("participants.json"), cache);
}

TEST_F(RefreshingTest, ARefusalIsLoggedAndTold) {
  service.answers(PARTICIPANTS_PATH, 403, {{"error", "No access"}});
  refreshSilently();
  EXPECT_THAT(watchLogLines(),
              ElementsAre("09:00:00 api-error: Couldn't load participants: No access"));
  EXPECT_THAT(notifier.shown,
              ElementsAre(Notification{"VELK Notewick", "Couldn't load participants: No access"}));
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_THAT(app().participants, SizeIs(2));
}

TEST_F(RefreshingTest, AMalformedAnswerIsARefusalAndKeepsTheList) {
  service.answersText(PARTICIPANTS_PATH, 200, "<html>");
  reload();
  EXPECT_THAT(notifier.shown, ElementsAre(Notification{"VELK Notewick",
                                                       "Couldn't load participants: Malformed "
                                                       "participants response"}));
  EXPECT_THAT(cached(), SizeIs(2));
}

TEST_F(RefreshingTest, AnExpiredSessionOpensTheSignInPanelAndIsNeitherLoggedNorTold) {
  service.backend.revokeTokens();
  restart();
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_THAT(watchLogLines(), IsEmpty());
  EXPECT_THAT(notifier.shown, IsEmpty());
  EXPECT_THAT(app().participants, SizeIs(2)) << "the last known list stays";
}

TEST_F(RefreshingTest, AMenuAfterAnExpiredSessionOffersTheSignIn) {
  service.backend.revokeTokens();
  restart();
  EXPECT_NE(statusItem().find("Sign in to VELK…"), nullptr);
  EXPECT_EQ(statusItem().find("Sign out of VELK"), nullptr);
}

TEST_F(RefreshingTest, ASecondExpiryShowsTheSamePanelAndLeavesTheKeyboard) {
  service.backend.revokeTokens();
  restart();
  signInPanel().type("ada@velk.example", "half a passw");
  auto* const panel = &signInPanel();
  panel->orderOut();
  app().handleApiFailure(VELKError::sessionExpired(), "x");
  EXPECT_EQ(&signInPanel(), panel);
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(signInPanel().presented, 1);
  EXPECT_EQ(signInPanel().typedPassword, "half a passw");
  EXPECT_EQ(views.signInsMade, 1);
}

TEST_F(RefreshingTest, NotBeingSignedInOpensTheSignInPanel) {
  app().handleApiFailure(VELKError::notSignedIn(), "x");
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_THAT(watchLogLines(), IsEmpty());
  EXPECT_THAT(notifier.shown, IsEmpty());
}

TEST_F(RefreshingTest, EveryFailureEndsWithANewMenu) {
  for (const auto& error : {VELKError::api("x"), VELKError::network("x"), VELKError::notSignedIn(),
                            VELKError::sessionExpired()}) {
    const auto menus = statusItem().menusSet;
    app().handleApiFailure(error, "Context");
    EXPECT_GT(statusItem().menusSet, menus) << error.message();
  }
}

TEST_F(RefreshingTest, AReasonOfTwoLinesIsLoggedAsItIs) {
  app().handleApiFailure(VELKError::network("one\ntwo"), "Context");
  EXPECT_EQ(text("watch.log"), "09:00:00 api-error: Context: one\ntwo\n");
}

// --- Reloading -----------------------------------------------------------------------------------

TEST_F(RefreshingTest, ReloadingAsksForTheListThenSendsTheOutbox) {
  service.isUnreachable("offline");
  app().enqueueNote(app().participants[0], "Visited", 15, "2024-05-02");
  loop.runPosted();
  service.recovers();
  forgetThePast();
  reload();
  EXPECT_THAT(service.trail(),
              ElementsAre("GET /api/desktop/participants", "POST /api/desktop/case-notes/capture"));
  EXPECT_THAT(notificationTitles(), ElementsAre("VELK Notewick", "Captured — Tobias Hargreave"));
}

// --- Signing out ---------------------------------------------------------------------------------

class SigningOutTest : public RefreshingTest {
 protected:
  SigningOutTest() {
    service.isUnreachable("offline");
    app().enqueueNote(app().participants[0], "Visited", 15, "2024-05-02");
    screen.show("Mail", {"Lena O'Keefe"});
    samples(4);
    screen.clear();
    samples(41);
    screen.show("Mail", {"Tobias Hargreave"});
    samples(2);
    forgetThePast();
    service.recovers();
  }

  void signOut() { statusItem().choose("Sign out of VELK"); }
};

TEST_F(SigningOutTest, ForgetsTokensUserAndParticipants) {
  signOut();
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  EXPECT_FALSE(defaults.values.contains("VELKUserEmail"));
  EXPECT_THAT(app().participants, IsEmpty());
  EXPECT_EQ(parseJson(text("participants.json")), json::array());
  EXPECT_THAT(service.requests, IsEmpty()) << "the service is not told";
}

TEST_F(SigningOutTest, SavesTheEmptyListThenShowsIt) {
  trace.clear();
  signOut();
  EXPECT_THAT(takeTrace(), ElementsAre("replace participants.json", "menu", "sign-in panel"));
}

TEST_F(SigningOutTest, KeepsPendingsNotesAndSessions) {
  const auto pendingFileBefore = text("pending.json");
  const auto outboxFileBefore = text("outbox.json");
  signOut();
  ASSERT_THAT(app().pendings, SizeIs(1));
  ASSERT_THAT(app().outbox, SizeIs(1));
  EXPECT_TRUE(app().sessions.contains("Tobias Hargreave"));
  EXPECT_EQ(text("pending.json"), pendingFileBefore);
  EXPECT_EQ(text("outbox.json"), outboxFileBefore);
}

TEST_F(SigningOutTest, TakesTheWidgetOffTheScreenButRemembersTheWish) {
  signOut();
  EXPECT_FALSE(widget().visible);
  EXPECT_TRUE(app().widgetVisible());
}

TEST_F(SigningOutTest, ShowsTheSignInPanelAndTheSignedOutMenu) {
  signOut();
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(statusItem().lines().front(), "Sign in to VELK…");
  EXPECT_EQ(statusItem().title, " VELK (2)");
}

TEST_F(SigningOutTest, NotesAreSentAfterTheNextSignIn) {
  signOut();
  signInWithPanel();
  EXPECT_THAT(app().outbox, IsEmpty());
  EXPECT_THAT(service.backend.notes, SizeIs(1));
  EXPECT_THAT(app().participants, SizeIs(2));
}

TEST_F(SigningOutTest, ParticipantsOnTheirWayAreNotTaken) {
  service.holdsAnswers();
  app().refreshParticipants(false);
  signOut();
  service.releasesAll();
  EXPECT_THAT(app().participants, IsEmpty());
  EXPECT_EQ(parseJson(text("participants.json")), json::array());
  EXPECT_FALSE(widget().visible);
  EXPECT_THAT(notifier.shown, IsEmpty());
}

TEST_F(SigningOutTest, ANoteOnItsWayIsTakenWhenTheServiceTookIt) {
  service.holdsAnswers();
  statusItem().choose("Retry now");
  signOut();
  service.releasesAll();
  EXPECT_THAT(app().outbox, IsEmpty());
  EXPECT_THAT(notificationTitles(), ElementsAre("Captured — Tobias Hargreave"));
}

TEST_F(SigningOutTest, ANoteWhoseTokenWasBeingRefreshedStays) {
  clock.set(clock.now() + Date(7200));
  service.holdsAnswers();
  statusItem().choose("Retry now");
  EXPECT_THAT(service.trail(), ElementsAre("POST /api/desktop/auth/refresh"));
  signOut();
  service.releasesAll();
  ASSERT_THAT(app().outbox, SizeIs(1));
  EXPECT_EQ(app().outbox.front().lastError, "Signed out meanwhile");
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  EXPECT_EQ(views.signInsMade, 1);
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
