#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "client/velk_client.h"
#include "tests/support/world.h"
#include "ui/start_at_login.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string LOG_LENA = "Log: Lena O'Keefe (~12 min, 2024-05-01)";

class CommandTest : public WorldTest {
 protected:
  CommandTest() {
    signIn();
    knows({"Lena O'Keefe", "Tobias Hargreave", "Zoe Abel"});
    launch();
    app().pendings = {{"P", "Zoe Abel", "2024-05-01", Date(0), Date(60), 3, {}},
                      {"Q", "Lena O'Keefe", "2024-05-01", Date(0), Date(60), 12, {}}};
    app().rebuildMenu();
    notifier.shown.clear();
    service.forgetRequests();
  }

  void losesItsParticipants() { app().participants.clear(); }
};

// --- A caught item -------------------------------------------------------------------------------

TEST_F(CommandTest, ACaughtItemFillsTheWidget) {
  statusItem().choose(LOG_LENA);
  EXPECT_TRUE(widget().visible);
  EXPECT_TRUE(widget().key);
  EXPECT_TRUE(widget().noteFocused);
  EXPECT_EQ(widget().selectedParticipant(), "Lena O'Keefe");
  EXPECT_EQ(widget().hint, "On screen ≈ 12 min — you set the duration.");
}

TEST_F(CommandTest, ACaughtItemMakesTheWidgetWhenThereIsNone) {
  defaults.setBoolean("VELKWidgetVisible", false);
  restart();
  app().pendings = {{"P", "Zoe Abel", "2024-05-01", Date(0), Date(60), 3, {}}};
  app().rebuildMenu();
  statusItem().choose("Log: Zoe Abel (~3 min, 2024-05-01)");
  EXPECT_TRUE(widget().visible);
  EXPECT_THAT(widget().rowTexts(), SizeIs(1));
  EXPECT_EQ(widget().selectedParticipant(), "Zoe Abel") << "the list was there to choose from";
}

TEST_F(CommandTest, ACaughtItemThatIsGoneDoesNothing) {
  const MenuItem old = *statusItem().find(LOG_LENA);
  app().removePending("Q");
  const auto menus = statusItem().menusSet;
  statusItem().choose(old);
  EXPECT_EQ(widget().hint, "Minutes — you set this.");
  EXPECT_EQ(statusItem().menusSet, menus);
}

TEST_F(CommandTest, ACaughtItemThatIsGoneAsksNobodyToSignIn) {
  const MenuItem old = *statusItem().find(LOG_LENA);
  losesItsParticipants();
  app().removePending("Q");
  statusItem().choose(old);
  EXPECT_EQ(views.signIn, nullptr);
}

TEST_F(CommandTest, AnItemWithoutIdDoesNothing) {
  const auto menus = statusItem().menusSet;
  app().openPending(MenuItem{"Log: x", MenuAction::openPending, "", std::nullopt, false});
  EXPECT_EQ(statusItem().menusSet, menus);
  EXPECT_EQ(widget().hint, "Minutes — you set this.");
}

TEST_F(CommandTest, ACaughtItemWithoutParticipantsOpensTheSignInPanel) {
  losesItsParticipants();
  statusItem().choose(LOG_LENA);
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(widget().hint, "Minutes — you set this.");
}

TEST_F(CommandTest, TheSignInPanelThatIsOpenServesACaughtItem) {
  losesItsParticipants();
  statusItem().choose(LOG_LENA);
  signInPanel().type("ada@velk.example", "half");
  statusItem().choose(LOG_LENA);
  EXPECT_EQ(signInPanel().presented, 2);
  EXPECT_EQ(signInPanel().typedPassword, "half");
  EXPECT_EQ(views.signInsMade, 1);
}

// --- Log work now --------------------------------------------------------------------------------

TEST_F(CommandTest, LogWorkNowOpensTheWidgetForTyping) {
  statusItem().choose("Hide floating widget");
  statusItem().choose("Log work now (call, visit…)");
  EXPECT_TRUE(widget().visible);
  EXPECT_TRUE(widget().key);
  EXPECT_TRUE(app().widgetVisible());
}

TEST_F(CommandTest, LogWorkNowLeavesTheFormAsItIs) {
  widget().type("half a note");
  widget().pickMinutes(45);
  widget().chooseParticipant("Zoe Abel");
  statusItem().choose("Log work now (call, visit…)");
  EXPECT_EQ(widget().note, "half a note");
  EXPECT_EQ(widget().minutes, 2u);
  EXPECT_EQ(widget().selectedParticipant(), "Zoe Abel");
  EXPECT_EQ(widget().hint, "Minutes — you set this.");
}

TEST_F(CommandTest, LogWorkNowSignedOutWithoutParticipantsOpensTheSignInPanel) {
  VELKClient::shared().signOut();
  losesItsParticipants();
  statusItem().choose("Log work now (call, visit…)");
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(CommandTest, LogWorkNowSignedOutWithParticipantsOpensTheWidget) {
  VELKClient::shared().signOut();
  statusItem().choose("Log work now (call, visit…)");
  EXPECT_TRUE(widget().key);
  EXPECT_EQ(views.signIn, nullptr);
}

TEST_F(CommandTest, LogWorkNowSignedInWithoutParticipantsLoadsThem) {
  losesItsParticipants();
  widget().orderOut();
  statusItem().choose("Log work now (call, visit…)");
  EXPECT_FALSE(widget().visible) << "nothing opens at once";
  EXPECT_THAT(service.trail(), ElementsAre("GET /api/desktop/participants"));
  loop.runPosted();
  EXPECT_TRUE(widget().visible);
  EXPECT_THAT(notifier.shown,
              ElementsAre(Notification{"VELK Notewick", "Watching for work on 3 participants."}));
}

TEST_F(CommandTest, LogWorkNowTellsALoadThatWasRefused) {
  losesItsParticipants();
  service.answers(PARTICIPANTS_PATH, 403);
  statusItem().choose("Log work now (call, visit…)");
  loop.runPosted();
  EXPECT_EQ(notifier.shown.back().body, "Couldn't load participants: Request failed (403)");
}

// --- The case notes ------------------------------------------------------------------------------

TEST_F(CommandTest, CaseNotesOpenInTheBrowser) {
  statusItem().choose("Open my case notes in VELK");
  EXPECT_THAT(workspace.openedUrls, ElementsAre("https://velk.example/case-notes"));
}

TEST_F(CommandTest, CaseNotesFollowTheBaseUrl) {
  defaults.setString("VELKBaseURL", "http://127.0.0.1:8080/");
  statusItem().choose("Open my case notes in VELK");
  EXPECT_THAT(workspace.openedUrls, ElementsAre("http://127.0.0.1:8080/case-notes"));
}

TEST_F(CommandTest, CaseNotesOpenInTheBrowserAlsoWherePlainHttpIsSpoken) {
  defaults.setString("VELKBaseURL", "HTTP://velk.example");
  statusItem().choose("Open my case notes in VELK");
  EXPECT_THAT(workspace.openedUrls, ElementsAre("HTTP://velk.example/case-notes"));
  EXPECT_THAT(notifier.shown, IsEmpty());
}

TEST_F(CommandTest, CaseNotesThatAreNoWebPageAreNotOpenedButToldAndLogged) {
  const std::string told =
      "Couldn't open your case notes: The service's address is not a web address.";
  for (const auto* const base :
       {"ftp://velk.example", "file:///home/ada", "velk.example", "https:velk.example", ""}) {
    defaults.setString("VELKBaseURL", base);
    files.put(supportFile("watch.log"), "");
    notifier.shown.clear();
    statusItem().choose("Open my case notes in VELK");
    EXPECT_THAT(workspace.openedUrls, IsEmpty()) << base;
    EXPECT_THAT(notifier.shown, ElementsAre(Notification{"VELK Notewick", told})) << base;
    EXPECT_EQ(text("watch.log").substr(9), "open-error: " + told + "\n") << base;
  }
}

using CommandDeathTest = CommandTest;

TEST_F(CommandDeathTest, CaseNotesOfABaseUrlThatIsNoAddressEndTheProgram) {
  defaults.setString("VELKBaseURL", "not an address");
  EXPECT_EXIT(statusItem().choose("Open my case notes in VELK"), testing::ExitedWithCode(1),
              "^notewick: VELKBaseURL is no valid address: not an address\n$");
}

// --- Trust ---------------------------------------------------------------------------------------

const Notification TURN_ON = {
    "VELK Notewick",
    "Turn VELK Notewick ON in the Accessibility list, then quit and reopen the app."};

TEST_F(CommandTest, TheRemedyForMissingTrustIsTheSettingsPage) {
  accessibility.trusted = false;
  app().rebuildMenu();
  const auto prompting = accessibility.promptingQueries;
  statusItem().choose("⚠️ Can't see your screen yet — click to fix");
  EXPECT_THAT(
      workspace.openedUrls,
      ElementsAre("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));
  EXPECT_THAT(notifier.shown, ElementsAre(TURN_ON));
  EXPECT_EQ(accessibility.promptingQueries, prompting) << "the page is the prompt";
}

TEST_F(CommandTest, WhereThereIsNoSettingsPageTheUserIsAsked) {
  accessibility.trusted = false;
  accessibility.trustRemedy = TrustRemedy::prompt;
  app().rebuildMenu();
  const auto prompts = accessibility.prompts;
  statusItem().choose("⚠️ Can't see your screen yet — click to fix");
  EXPECT_THAT(workspace.openedUrls, IsEmpty());
  EXPECT_EQ(accessibility.prompts, prompts + 1);
  EXPECT_THAT(notifier.shown, ElementsAre(TURN_ON));
}

// --- Start at login ------------------------------------------------------------------------------

const std::string AGENT = "/home/ada/Library/LaunchAgents/tools.velk.notewick.plist";
const Notification WILL_START = {"VELK Notewick", "Will start automatically at login."};

TEST_F(CommandTest, StartAtLoginWritesTheLaunchAgentAtomically) {
  files.put("/home/ada/Library/LaunchAgents/other.plist", "");
  deeds.clear();
  statusItem().choose("Start at login");
  EXPECT_EQ(files.contents(AGENT), launchAgentText("/Applications/VELK Notewick.app"));
  EXPECT_THAT(deeds, ElementsAre("replace atomically " + AGENT, "notify VELK Notewick"));
  EXPECT_THAT(notifier.shown, ElementsAre(WILL_START));
}

TEST_F(CommandTest, StartAtLoginTwiceLeavesTheSameFile) {
  files.put(AGENT, "something old");
  statusItem().choose("Start at login");
  const auto first = files.contents(AGENT);
  statusItem().choose("Start at login");
  EXPECT_EQ(files.contents(AGENT), first);
  EXPECT_EQ(first, launchAgentText("/Applications/VELK Notewick.app"));
}

TEST_F(CommandTest, StartAtLoginFollowsAMovedProgram) {
  files.put(AGENT, "");
  statusItem().choose("Start at login");
  workspace.bundle = "/Users/ada/Apps/VELK Notewick.app";
  statusItem().choose("Start at login");
  EXPECT_EQ(files.contents(AGENT), launchAgentText("/Users/ada/Apps/VELK Notewick.app"));
}

TEST_F(CommandTest, WithoutTheAgentsFolderNothingIsWrittenButConfirmed) {
  statusItem().choose("Start at login");
  EXPECT_EQ(files.contents(AGENT), std::nullopt);
  EXPECT_FALSE(files.folderExists("/home/ada/Library/LaunchAgents"));
  EXPECT_THAT(notifier.shown, ElementsAre(WILL_START));
}

TEST_F(CommandTest, AnAutostartEntryGetsItsFolder) {
  workspace.form = LoginItemForm::autostartEntry;
  workspace.bundle = "/usr/bin/notewick";
  statusItem().choose("Start at login");
  EXPECT_EQ(files.contents("/home/ada/.config/autostart/tools.velk.notewick.desktop"),
            autostartEntryText("/usr/bin/notewick"));
  EXPECT_THAT(notifier.shown, ElementsAre(WILL_START));
}

}  // namespace
}  // namespace notewick
