#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "app/entry.h"
#include "tests/ui/signing_in_world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- A store that is locked at launch ------------------------------------------------------------

class LockedStoreTest : public SigningInTest {
 protected:
  /// The program starts while the store that holds its token is locked.
  LockedStoreTest() {
    signIn();
    hasANoteWaiting();
    secrets.locked = true;
    launch();
  }
};

TEST_F(LockedStoreTest, TheUserCountsAsSignedInAndIsAskedOnce) {
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_EQ(menuBegins(), SIGNED_IN);
  statusItem().choose("Reload participants");
  advance(3600);
  EXPECT_EQ(secrets.unlockRequests, 1u);
  EXPECT_THAT(watchLogLines().front(),
              "09:00:00 api-error: Couldn't load participants: The password store is locked");
  EXPECT_EQ(app().outbox.front().lastError, "The password store is locked");
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(LockedStoreTest, OpenedItRefreshesSilentlySendsAndRebuilds) {
  const auto menus = statusItem().menusSet;
  secrets.userAnswers(true);
  EXPECT_THAT(service.requestsTo(PARTICIPANTS_PATH), SizeIs(1));
  EXPECT_THAT(notifier.shown, ElementsAre(captured("Lena O'Keefe", 30)))
      << "no word of the participants";
  EXPECT_GT(statusItem().menusSet, menus);
}

TEST_F(LockedStoreTest, DismissedItIsSignedOutUntilTheSignInCommandAsksAgain) {
  secrets.userAnswers(false);
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(menuBegins(), SIGN_IN);
  statusItem().choose("Reload participants");
  statusItem().choose(SIGN_IN);
  EXPECT_EQ(signInPanel().presented, 2) << "the panel that is open";
  EXPECT_EQ(secrets.unlockRequests, 1u);
  closesThePanel();
  statusItem().choose(SIGN_IN);
  EXPECT_EQ(secrets.unlockRequests, 2u);
  EXPECT_EQ(views.signIn, nullptr) << "the question comes first";
  secrets.userAnswers(true);
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_EQ(menuBegins(), SIGNED_IN);
}

TEST_F(LockedStoreTest, OnceItIsOpenTheNextFailureTakesTheKeyboardAgain) {
  secrets.userAnswers(false);
  closesThePanel();
  secrets.othersOpen();
  sessionExpires();
  EXPECT_TRUE(signInPanel().key);
}

TEST_F(LockedStoreTest, SigningOutAsksForTheStoreAlsoAfterARefusal) {
  secrets.userAnswers(false);
  signInWithPanel();
  statusItem().choose("Sign out of VELK");
  EXPECT_EQ(secrets.unlockRequests, 2u);
  secrets.userAnswers(true);
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  EXPECT_EQ(menuBegins(), SIGN_IN);
}

TEST_F(LockedStoreTest, OpenedByOthersAfterASignOutItOpensNoPanel) {
  statusItem().choose("Sign out of VELK");
  closesThePanel();
  secrets.othersOpen();
  EXPECT_EQ(menuBegins(), SIGN_IN);
  EXPECT_EQ(views.signIn, nullptr);
}

TEST_F(LockedStoreTest, DismissedAfterASignOutItOpensNoPanel) {
  statusItem().choose("Sign out of VELK");
  closesThePanel();
  secrets.userAnswers(false);
  EXPECT_EQ(views.signIn, nullptr);
}

TEST_F(LockedStoreTest, TheAnswerToAnEarlierQuestionOpensNoPanelAfterASignOut) {
  for (const bool opens : {false, true}) {
    SCOPED_TRACE(opens);
    signIn();
    secrets.locked = true;
    restart();
    app().participants.clear();
    statusItem().choose("Log work now (call, visit…)");
    statusItem().choose("Sign out of VELK");
    closesThePanel();
    secrets.userAnswers(opens);
    EXPECT_EQ(views.signIn, nullptr);
  }
}

TEST_F(LockedStoreTest, TheSignInCommandOpensThePanelWhereTheOpenedStoreHoldsNothing) {
  secrets.userAnswers(false);
  closesThePanel();
  statusItem().choose(SIGN_IN);
  secrets.othersRemove();
  secrets.userAnswers(true);
  EXPECT_TRUE(signInPanel().key);
}

TEST_F(LockedStoreTest, AnAnswerAfterTheEndReachesNobody) {
  delegate = nullptr;
  secrets.userAnswers(true);
  EXPECT_THAT(service.requests, IsEmpty());
}

// --- A store that hangs at launch ----------------------------------------------------------------

TEST_F(SigningInTest, AStoreThatHangsAgainAfterTheQuestionAndHoldsNothingLeadsToThePanel) {
  secrets.hangs = true;
  launch();
  secrets.userAnswers(true);
  EXPECT_EQ(views.signIn, nullptr) << "the token may be there";
  secrets.answersAgain();
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(menuBegins(), SIGN_IN);
}

// --- A store that locks later --------------------------------------------------------------------

TEST_F(SigningInTest, AStoreThatLocksLaterIsAskedForByTheCommandsThatNeedIt) {
  for (const char* const command :
       {"Reload participants", "Retry now", "Log work now (call, visit…)",
        "Log: Lena O'Keefe (~3 min, 2024-05-01)", "Sign out of VELK"}) {
    SCOPED_TRACE(command);
    signIn();
    restart();
    secrets.othersLock();
    clock.jump(7200);
    app().participants.clear();
    app().outbox = {{"N", "1", "Tobias Hargreave", "x", 30, "2024-05-02"}};
    app().pendings = {{"P", "Lena O'Keefe", "2024-05-01", Date(0), Date(60), 3, {}}};
    app().rebuildMenu();
    secrets.unlockRequests = 0;
    advance(60);
    EXPECT_EQ(secrets.unlockRequests, 0u) << "not without the user";
    statusItem().choose(command);
    EXPECT_EQ(secrets.unlockRequests, 1u);
    secrets.userAnswers(true);
  }
}

// --- No store ------------------------------------------------------------------------------------

TEST_F(SigningInTest, WithoutAStoreThePanelSaysHowLongTheSignInLasts) {
  secrets.missing = true;
  const std::string told = "No password store on this desktop: the sign-in lasts until you quit.";
  launch();
  EXPECT_EQ(signInPanel().error, told);
  closesThePanel();
  statusItem().choose("Reload participants");
  EXPECT_EQ(signInPanel().error, told) << "also when it comes by itself";
  signInWithPanel();
  EXPECT_EQ(menuBegins(), SIGNED_IN);
  advance(7200);
  statusItem().choose("Reload participants");
  loop.runPosted();
  EXPECT_EQ(notifier.shown.back(), general("Watching for work on 2 participants."))
      << "also with a token that had to be refreshed";
  EXPECT_EQ(secrets.unlockRequests, 0u);
  restart();
  EXPECT_EQ(menuBegins(), SIGN_IN);
  secrets.comes();
  restart();
  EXPECT_EQ(signInPanel().error, "");
}

TEST_F(SigningInTest, AStoreThatComesLockedAndStaysSoLeadsToThePanelAgain) {
  signIn();
  secrets.missing = true;
  launch();
  closesThePanel();
  secrets.othersLock();
  secrets.comes();
  statusItem().choose("Log work now (call, visit…)");
  secrets.userAnswers(false);
  EXPECT_TRUE(signInPanel().visible);
}

// --- A sign-in while the store is locked ---------------------------------------------------------

TEST_F(SigningInTest, ASignInWhoseTokenCannotBeSavedAsksForTheStore) {
  secrets.othersLock();
  launch();
  EXPECT_EQ(secrets.unlockRequests, 0u) << "there is no token of ours to get at";
  signInWithPanel();
  EXPECT_EQ(secrets.unlockRequests, 1u);
  EXPECT_THAT(app().participants, SizeIs(2)) << "it works meanwhile";
  secrets.userAnswers(true);
  EXPECT_EQ(secrets.refreshToken(), "refresh-1");
}

TEST_F(SigningInTest, ASignInThatMayNotBeSavedLastsUntilTheEnd) {
  secrets.othersLock();
  launch();
  signInWithPanel();
  secrets.userAnswers(false);
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_EQ(menuBegins(), SIGNED_IN);
}

}  // namespace
}  // namespace notewick
