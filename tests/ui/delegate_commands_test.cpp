#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "client/velk_client.h"
#include "tests/support/world.h"
#include "ui/start_at_login.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string LOG_LENA = "Log: Lena O'Keefe (~12 min, 2024-05-01)";
const std::string LOG_NOW = "Log work now (call, visit…)";
const std::string FIX_TRUST = "⚠️ Can't see your screen yet — click to fix";

class CommandTest : public WorldTest {
 protected:
  CommandTest() {
    runsKnowing({"Al Best", "Lena O'Keefe", "Zoe Abel"});
    catchesLena();
    trace.clear();
  }

  void catchesLena() {
    app().pendings = {{"Q", "Lena O'Keefe", "2024-05-01", Date(0), Date(60), 12, {}}};
    app().rebuildMenu();
  }
  void losesItsParticipants() { app().participants.clear(); }
  void losesTrust() {
    accessibility.trusted = false;
    app().rebuildMenu();
  }
  void chooses(const std::string& command) { statusItem().choose(command); }
};

// --- A caught item -------------------------------------------------------------------------------

TEST_F(CommandTest, ACaughtItemFillsTheWidgetWhichIsMadeWhenThereIsNone) {
  defaults.setBoolean("VELKWidgetVisible", false);
  restart();
  catchesLena();
  chooses(LOG_LENA);
  EXPECT_TRUE(widget().key);
  EXPECT_EQ(widget().selectedParticipant(), "Lena O'Keefe");
  EXPECT_EQ(widget().hint, "On screen ≈ 12 min — you set the duration.");
}

TEST_F(CommandTest, ACaughtItemThatIsGoneDoesNothing) {
  const MenuItem old = *statusItem().find(LOG_LENA);
  losesItsParticipants();
  app().removePending("Q");
  trace.clear();
  statusItem().choose(old);
  app().openPending({.title = "Log: x", .action = MenuAction::openPending});
  EXPECT_THAT(trace, IsEmpty());
}

TEST_F(CommandTest, ACaughtItemWithoutParticipantsOpensTheSignInPanel) {
  losesItsParticipants();
  chooses(LOG_LENA);
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_FALSE(widget().key);
}

// --- Log work now --------------------------------------------------------------------------------

TEST_F(CommandTest, LogWorkNowOpensTheWidgetForTypingAndLeavesTheFormAsItIs) {
  VELKClient::shared().signOut();
  widget().type("half a note");
  widget().pickMinutes(45);
  widget().chooseParticipant("Zoe Abel");
  chooses("Hide floating widget");
  chooses(LOG_NOW);
  EXPECT_TRUE(widget().visible);
  EXPECT_TRUE(widget().key);
  EXPECT_EQ(widget().note, "half a note");
  EXPECT_EQ(widget().minutes, 2u);
  EXPECT_EQ(widget().selectedParticipant(), "Zoe Abel");
  EXPECT_EQ(views.signIn, nullptr) << "the participants are enough";
}

TEST_F(CommandTest, LogWorkNowWithoutParticipantsLoadsThem) {
  losesItsParticipants();
  widget().orderOut();
  chooses(LOG_NOW);
  EXPECT_FALSE(widget().visible) << "nothing opens at once";
  loop.runPosted();
  EXPECT_TRUE(widget().visible);
  EXPECT_THAT(notifier.shown, ElementsAre(general("Watching for work on 3 participants.")));
}

TEST_F(CommandTest, LogWorkNowSignedOutWithoutParticipantsOpensTheSignInPanel) {
  VELKClient::shared().signOut();
  losesItsParticipants();
  chooses(LOG_NOW);
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_THAT(service.requests, IsEmpty());
}

// --- The case notes ------------------------------------------------------------------------------

TEST_F(CommandTest, CaseNotesOpenInTheBrowserAlsoWherePlainHttpIsSpoken) {
  chooses("Open my case notes in VELK");
  defaults.setString("VELKBaseURL", "http://velk.example/");
  chooses("Open my case notes in VELK");
  EXPECT_THAT(workspace.openedUrls,
              ElementsAre("https://velk.example/case-notes", "http://velk.example/case-notes"));
  EXPECT_THAT(notifier.shown, IsEmpty());
}

TEST_F(CommandTest, CaseNotesThatAreNoWebPageAreReportedInstead) {
  const std::string report =
      "Couldn't open your case notes: The service's address is not a web address.";
  defaults.setString("VELKBaseURL", "file:///home/ada");
  chooses("Open my case notes in VELK");
  EXPECT_THAT(workspace.openedUrls, IsEmpty());
  EXPECT_THAT(notifier.shown, ElementsAre(general(report)));
  EXPECT_THAT(watchLogLines(), ElementsAre("09:00:00 open-error: " + report));
}

// --- Clicks on notifications ---------------------------------------------------------------------

class ClickedNotificationTest : public CommandTest {
 protected:
  /// A session with Lena has ended.
  ClickedNotificationTest() {
    WorkSession session("Lena O'Keefe", clock.now() - Date(700));
    session.sightings = 4;
    app().addPending(session);
    widget().orderOut();
  }

  void clicksAndSees(const std::string& title, const std::string& hint) {
    notifier.click(title);
    EXPECT_TRUE(widget().key);
    EXPECT_EQ(widget().hint, hint);
  }
};

TEST_F(ClickedNotificationTest, LogItOpensTheCaughtItem) {
  clicksAndSees("Log it? — Lena O'Keefe", "On screen ≈ 1 min — you set the duration.");
  EXPECT_EQ(widget().selectedParticipant(), "Lena O'Keefe");
}

TEST_F(ClickedNotificationTest, LogItForAnItemThatIsGoneOpensTheWidgetForTyping) {
  app().removePending(app().pendings.back().id);
  clicksAndSees("Log it? — Lena O'Keefe", "Minutes — you set this.");
}

TEST_F(ClickedNotificationTest, CapturedOpensTheCaseNotes) {
  app().enqueueNote({"2", "Lena", "O'Keefe"}, "Phoned", 30, "2024-05-02");
  loop.runPosted();
  notifier.click("Captured — Lena O'Keefe");
  EXPECT_THAT(workspace.openedUrls, ElementsAre("https://velk.example/case-notes"));
  EXPECT_FALSE(widget().visible);
}

TEST_F(ClickedNotificationTest, AnyOtherOpensTheWidgetForTyping) {
  chooses("Start at login");
  clicksAndSees("VELK Notewick", "Minutes — you set this.");
  EXPECT_THAT(workspace.openedUrls, IsEmpty());
}

TEST_F(ClickedNotificationTest, AfterTheEndNothingHappens) {
  kill();
  notifier.click("Log it? — Lena O'Keefe");
  EXPECT_EQ(views.quickNote, nullptr);
}

// --- Trust ---------------------------------------------------------------------------------------

TEST_F(CommandTest, TheRemedyForMissingTrustIsTheSettingsPageOrWhereThereIsNoneAQuestion) {
  losesTrust();
  chooses(FIX_TRUST);
  EXPECT_THAT(
      workspace.openedUrls,
      ElementsAre("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));
  EXPECT_EQ(accessibility.prompts, 0);
  EXPECT_THAT(notifier.shown, ElementsAre(general("Turn VELK Notewick ON in the Accessibility "
                                                  "list, then quit and reopen the app.")));
  accessibility.trustRemedy = TrustRemedy::prompt;
  chooses(FIX_TRUST);
  EXPECT_EQ(workspace.openedUrls.size(), 1u);
  EXPECT_EQ(accessibility.prompts, 1);
}

// --- Start at login ------------------------------------------------------------------------------

TEST_F(CommandTest, StartAtLoginReplacesTheLaunchAgentAtomically) {
  const std::string agent = "/home/ada/Library/LaunchAgents/tools.velk.notewick.plist";
  files.put(agent, "something old");
  chooses("Start at login");
  EXPECT_EQ(files.contents(agent), launchAgentText("/Applications/VELK Notewick.app"));
  EXPECT_THAT(trace, ElementsAre("replace atomically " + agent, "notify VELK Notewick"));
  EXPECT_THAT(notifier.shown, ElementsAre(general("Will start automatically at login.")));
}

TEST_F(CommandTest, AnAutostartEntryGetsItsFolder) {
  workspace.form = LoginItemForm::autostartEntry;
  workspace.bundle = "/usr/bin/notewick";
  chooses("Start at login");
  EXPECT_EQ(files.contents("/home/ada/.config/autostart/tools.velk.notewick.desktop"),
            autostartEntryText("/usr/bin/notewick"));
}

}  // namespace
}  // namespace notewick
