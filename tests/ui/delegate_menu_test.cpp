#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "client/velk_client.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class MenuTest : public WorldTest {
 protected:
  MenuTest() {
    signIn();
    knows({"Tobias Hargreave", "Lena O'Keefe"});
    launch();
    notifier.shown.clear();
    service.forgetRequests();
  }

  /// The menu is built from the state as it is now.
  std::vector<std::string> rebuilt() {
    app().rebuildMenu();
    return statusItem().lines();
  }
};

// --- What it shows -------------------------------------------------------------------------------

TEST_F(MenuTest, ShowsTheDelegatesState) {
  app().pendings = {{"P", "Lena O'Keefe", "2024-05-02", Date(0), Date(60), 12, {}}};
  app().outbox = {{"N", "1", "Tobias Hargreave", "x", 30, "2024-05-02"}};
  EXPECT_THAT(
      rebuilt(),
      ElementsAre("(Signed in as ada@velk.example)", "(Watching · 2 participants)", "-",
                  "Log: Lena O'Keefe (~12 min, 2024-05-02)", "-",
                  "(1 note waiting to send to VELK)", "Retry now", "-",
                  "Log work now (call, visit…)", "Hide floating widget",
                  "Open my case notes in VELK", "-", "Pause watching", "Reload participants",
                  "Start at login", "Sign out of VELK", "-", "Quit VELK Notewick"));
  EXPECT_EQ(statusItem().title, " VELK (2)");
  EXPECT_EQ(statusItem().count, 2U);
}

TEST_F(MenuTest, IsBuiltWholeFromTheStateOfTheMoment) {
  app().outbox = {{"N", "1", "Tobias Hargreave", "x", 30, "2024-05-02"}};
  (void)rebuilt();
  app().outbox.clear();
  EXPECT_THAT(rebuilt(), testing::Not(testing::Contains("Retry now")));
  EXPECT_EQ(statusItem().title, " VELK");
}

TEST_F(MenuTest, ASignInWithoutEmailIsYourAccount) {
  defaults.remove("VELKUserEmail");
  EXPECT_EQ(rebuilt().front(), "(Signed in as your VELK account)");
}

TEST_F(MenuTest, FollowsTrustWithoutAskingForIt) {
  accessibility.trusted = false;
  const auto prompting = accessibility.promptingQueries;
  EXPECT_EQ(rebuilt()[1], "⚠️ Can't see your screen yet — click to fix");
  EXPECT_EQ(accessibility.promptingQueries, prompting);
}

TEST_F(MenuTest, SignedOutTrustIsNotLookedAt) {
  VELKClient::shared().signOut();
  const auto queries = accessibility.queries;
  EXPECT_EQ(rebuilt().front(), "Sign in to VELK…");
  EXPECT_EQ(accessibility.queries, queries);
}

TEST_F(MenuTest, AnUnreadableWishCountsAsVisible) {
  defaults.values["VELKWidgetVisible"] = std::string("no");
  EXPECT_THAT(rebuilt(), testing::Contains("Hide floating widget"));
}

using MenuDeathTest = MenuTest;

TEST_F(MenuDeathTest, AMenuBeforeItsStatusItemEndsTheProgram) {
  EXPECT_EXIT(
      {
        app().statusItem.reset();
        app().rebuildMenu();
      },
      testing::ExitedWithCode(1), "^notewick: [^\n]*\n$");
}

// --- Pausing -------------------------------------------------------------------------------------

TEST_F(MenuTest, PausingDiscardsTheSessionsUnpromoted) {
  screen.show("Mail", {"Lena O'Keefe"});
  samples(8);
  statusItem().choose("Pause watching");
  EXPECT_THAT(app().sessions, IsEmpty());
  EXPECT_THAT(app().pendings, IsEmpty());
  EXPECT_EQ(statusItem().lines()[1], "(Paused)");
  EXPECT_NE(statusItem().find("Resume watching"), nullptr);
}

TEST_F(MenuTest, ResumingStartsWithNoSession) {
  screen.show("Mail", {"Lena O'Keefe"});
  samples(8);
  statusItem().choose("Pause watching");
  samples(2);
  statusItem().choose("Resume watching");
  EXPECT_THAT(app().sessions, IsEmpty());
  EXPECT_EQ(statusItem().lines()[1], "(Watching · 2 participants)");
  samples(1);
  EXPECT_EQ(app().sessions.at("Lena O'Keefe").sightings, 1);
}

TEST_F(MenuTest, ResumingDiscardsNothing) {
  app().paused = true;
  app().sessions.try_emplace("Lena O'Keefe", "Lena O'Keefe", clock.now());
  app().togglePause();
  EXPECT_THAT(app().sessions, SizeIs(1));
}

// --- Choosing ------------------------------------------------------------------------------------

TEST_F(MenuTest, EveryCommandReachesItsOperation) {
  statusItem().choose("Reload participants");
  EXPECT_THAT(service.trail(), ElementsAre("GET /api/desktop/participants"));
  statusItem().choose("Open my case notes in VELK");
  EXPECT_THAT(workspace.openedUrls, SizeIs(1));
  statusItem().choose("Hide floating widget");
  EXPECT_FALSE(widget().visible);
  statusItem().choose("Log work now (call, visit…)");
  EXPECT_TRUE(widget().key);
  statusItem().choose("Start at login");
  EXPECT_EQ(notifier.shown.back().body, "Will start automatically at login.");
  statusItem().choose("Sign out of VELK");
  EXPECT_FALSE(VELKClient::shared().isSignedIn());
  statusItem().choose("Sign in to VELK…");
  EXPECT_EQ(signInPanel().presented, 2);
}

TEST_F(MenuTest, QuittingIsTheApplicationsOwnBusiness) {
  const auto menus = statusItem().menusSet;
  app().menuItemChosen(*statusItem().find("Quit VELK Notewick"));
  EXPECT_EQ(statusItem().menusSet, menus);
}

TEST_F(MenuTest, AnItemWithoutActionDoesNothing) {
  const auto menus = statusItem().menusSet;
  app().menuItemChosen(MenuItem{"Paused", std::nullopt, "", std::nullopt, false});
  EXPECT_EQ(statusItem().menusSet, menus);
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(MenuTest, AClickOnTheItemIsLogWorkNow) {
  statusItem().choose("Hide floating widget");
  statusItem().click();
  EXPECT_TRUE(widget().visible);
  EXPECT_TRUE(widget().key);
}

}  // namespace
}  // namespace notewick
