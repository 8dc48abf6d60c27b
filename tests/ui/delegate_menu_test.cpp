#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "client/velk_client.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;

class MenuTest : public WorldTest {
 protected:
  MenuTest() { runsKnowing({"Tobias Hargreave", "Lena O'Keefe"}); }

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
      IsSupersetOf({"(Signed in as ada@velk.example)", "(Watching · 2 participants)",
                    "Log: Lena O'Keefe (~12 min, 2024-05-02)", "(1 note waiting to send to VELK)",
                    "Hide floating widget", "Pause watching"}));
  EXPECT_EQ(statusItem().title, " VELK (2)");
  EXPECT_EQ(statusItem().count, 2U);
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

using MenuDeathTest = MenuTest;

TEST_F(MenuDeathTest, AMenuBeforeItsStatusItemEndsTheProgram) {
  EXPECT_EXIT(
      {
        app().statusItem.reset();
        app().rebuildMenu();
      },
      testing::ExitedWithCode(1), "^notewick: [^\n]*\n$");
}

// --- Choosing ------------------------------------------------------------------------------------

TEST_F(MenuTest, PausingDiscardsTheSessionsUnpromotedAndResumingNone) {
  sees({"Lena O'Keefe"}, 8);
  statusItem().choose("Pause watching");
  EXPECT_THAT(app().sessions, IsEmpty());
  EXPECT_THAT(app().pendings, IsEmpty());
  EXPECT_EQ(statusItem().lines()[1], "(Paused)");
  app().sessions.try_emplace("Lena O'Keefe", "Lena O'Keefe", clock.now());
  statusItem().choose("Resume watching");
  EXPECT_THAT(app().sessions, SizeIs(1));
  EXPECT_EQ(statusItem().lines()[1], "(Watching · 2 participants)");
}

TEST_F(MenuTest, QuittingIsTheApplicationsOwnBusinessAndAnItemWithoutActionNobodys) {
  statusItem().choose("Quit VELK Notewick");
  app().menuItemChosen(MenuItem{"Paused"});
  EXPECT_THAT(trace, IsEmpty());
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
