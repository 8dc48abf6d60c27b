#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "app/entry.h"
#include "tests/ui/signing_in_world.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- A locked store ------------------------------------------------------------------------------

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

TEST_F(LockedStoreTest, ItCountsAsSignedInAndOpensNoPanel) {
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_EQ(statusItem().lines()[0], "(Signed in as ada@velk.example)");
  EXPECT_NE(statusItem().find("Sign out of VELK"), nullptr);
  EXPECT_EQ(secrets.questions(), 1u);
}

TEST_F(LockedStoreTest, CallsFailSayingSo) {
  app().refreshParticipants(true);
  app().flushOutbox();
  EXPECT_THAT(watchLogLines(), ElementsAre("09:00:00 api-error: Couldn't load participants: The "
                                           "password store is locked"));
  EXPECT_EQ(app().outbox.front().lastError, "The password store is locked");
  EXPECT_THAT(notifier.shown, IsEmpty());
  EXPECT_THAT(service.requests, IsEmpty());
  EXPECT_EQ(views.signIn, nullptr);
}

TEST_F(LockedStoreTest, ClicksDoNotAskAgainWhileTheQuestionIsOpen) {
  statusItem().choose("Reload participants");
  statusItem().choose("Retry now");
  advance(3600);
  EXPECT_EQ(secrets.unlockRequests, 1u);
}

TEST_F(LockedStoreTest, ACaughtItemWithoutParticipantsOpensNoPanel) {
  app().participants.clear();
  app().pendings = {{"P", "Zoe Abel", "2024-05-01", Date(0), Date(60), 3, {}}};
  app().rebuildMenu();
  statusItem().choose("Log: Zoe Abel (~3 min, 2024-05-01)");
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_EQ(secrets.questions(), 1u);
}

TEST_F(LockedStoreTest, OpenedItRefreshesSilentlySendsAndRebuilds) {
  const auto menus = statusItem().menusSet;
  secrets.userAnswers(true);
  EXPECT_THAT(service.trail(),
              ElementsAre("POST /api/desktop/auth/refresh", "POST /api/desktop/auth/refresh",
                          "GET /api/desktop/participants", "POST /api/desktop/case-notes/capture"));
  EXPECT_THAT(notifier.shown, ElementsAre(CAPTURED)) << "no word of the participants";
  EXPECT_THAT(app().participants, SizeIs(2));
  EXPECT_GT(statusItem().menusSet, menus);
}

TEST_F(LockedStoreTest, DismissedItIsSignedOutAndAsksForTheSignIn) {
  secrets.userAnswers(false);
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(statusItem().lines()[0], "Sign in to VELK…");
  app().flushOutbox();
  EXPECT_EQ(app().outbox.front().lastError, "Not signed in");
  statusItem().choose("Reload participants");
  EXPECT_EQ(secrets.unlockRequests, 1u) << "only the sign-in command asks again";
}

TEST_F(LockedStoreTest, TheSignInCommandAsksAgain) {
  secrets.userAnswers(false);
  signInPanel().close();
  loop.runPosted();
  statusItem().choose("Sign in to VELK…");
  EXPECT_EQ(secrets.unlockRequests, 2u);
  EXPECT_EQ(views.signIn, nullptr) << "the question comes first";
  secrets.userAnswers(true);
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_THAT(app().participants, SizeIs(2));
  EXPECT_EQ(statusItem().lines()[0], "(Signed in as ada@velk.example)");
}

TEST_F(LockedStoreTest, DismissedTwiceThePanelIsTheWayIn) {
  secrets.userAnswers(false);
  signInPanel().close();
  loop.runPosted();
  statusItem().choose("Sign in to VELK…");
  secrets.userAnswers(false);
  EXPECT_TRUE(signInPanel().visible);
  signInWithPanel();
  EXPECT_THAT(app().participants, SizeIs(2));
  EXPECT_EQ(secrets.unlockRequests, 2u) << "who refused twice is left in peace";
}

TEST_F(LockedStoreTest, TheSignInCommandWithThePanelOpenBringsItForward) {
  secrets.userAnswers(false);
  statusItem().choose("Sign in to VELK…");
  EXPECT_EQ(secrets.unlockRequests, 1u);
  EXPECT_EQ(signInPanel().presented, 2);
}

TEST_F(LockedStoreTest, SigningOutTakesTheTokenAwayWhenTheStoreOpens) {
  statusItem().choose("Sign out of VELK");
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_EQ(statusItem().lines()[0], "Sign in to VELK…");
  secrets.userAnswers(true);
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  EXPECT_EQ(statusItem().lines()[0], "Sign in to VELK…");
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(LockedStoreTest, SigningOutAsksForTheStoreAlsoAfterARefusal) {
  secrets.userAnswers(false);
  signInWithPanel();
  statusItem().choose("Sign out of VELK");
  EXPECT_EQ(secrets.unlockRequests, 2u);
  secrets.userAnswers(true);
  EXPECT_EQ(secrets.refreshToken(), std::nullopt) << "nor does the token of before come back";
  restart();
  EXPECT_EQ(statusItem().lines()[0], "Sign in to VELK…");
}

TEST_F(LockedStoreTest, ADismissalAfterASignInOpensNoPanel) {
  statusItem().choose("Sign out of VELK");
  signInWithPanel();
  secrets.userAnswers(false);
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_EQ(statusItem().lines()[0], "(Signed in as ada@velk.example)");
}

TEST_F(LockedStoreTest, AnAnswerAfterTheEndReachesNobody) {
  delegate = nullptr;
  secrets.userAnswers(true);
  EXPECT_THAT(service.requests, IsEmpty());
}

// --- A store that somebody else opens ------------------------------------------------------------

TEST_F(LockedStoreTest, OpenedByOthersWhileTheQuestionIsOpenItCountsAsOpened) {
  const auto menus = statusItem().menusSet;
  secrets.othersOpen();
  EXPECT_THAT(app().participants, SizeIs(2));
  EXPECT_THAT(notifier.shown, ElementsAre(CAPTURED)) << "no word of the participants";
  EXPECT_GT(statusItem().menusSet, menus);
  service.forgetRequests();
  secrets.userAnswers(false);
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(LockedStoreTest, OpenedByOthersAfterADismissalItIsSignedInAgain) {
  secrets.userAnswers(false);
  signInPanel().close();
  loop.runPosted();
  secrets.othersOpen();
  EXPECT_EQ(statusItem().lines()[0], "(Signed in as ada@velk.example)");
  EXPECT_THAT(app().participants, SizeIs(2));
  EXPECT_THAT(app().outbox, IsEmpty());
  EXPECT_EQ(views.signIn, nullptr);
}

TEST_F(LockedStoreTest, OpenedByOthersAfterASignOutItStaysSignedOut) {
  statusItem().choose("Sign out of VELK");
  signInPanel().close();
  loop.runPosted();
  secrets.othersOpen();
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  EXPECT_EQ(statusItem().lines()[0], "Sign in to VELK…");
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_THAT(service.requests, IsEmpty());
}

// --- A store that locks later --------------------------------------------------------------------

TEST_F(SigningInTest, AStoreThatLocksLaterIsAskedForOnAClick) {
  signIn();
  launch();
  secrets.othersLock();
  clock.set(clock.now() + Date(7200));
  app().flushOutbox();
  advance(60);
  EXPECT_EQ(secrets.unlockRequests, 0u) << "not without the user";
  statusItem().choose("Reload participants");
  EXPECT_EQ(secrets.unlockRequests, 1u);
  secrets.userAnswers(true);
  EXPECT_THAT(watchLogLines(),
              testing::Contains(testing::EndsWith("The password store is locked")));
  EXPECT_THAT(app().participants, SizeIs(2));
}

TEST_F(SigningInTest, WithoutParticipantsTheCommandsThatNeedThemAskForTheStore) {
  for (const std::string command :
       {"Log: Zoe Abel (~3 min, 2024-05-01)", "Log work now (call, visit…)"}) {
    signIn();
    restart();
    app().participants.clear();
    app().pendings = {{"P", "Zoe Abel", "2024-05-01", Date(0), Date(60), 3, {}}};
    app().rebuildMenu();
    secrets.othersLock();
    const auto before = secrets.unlockRequests;
    statusItem().choose(command);
    EXPECT_EQ(secrets.unlockRequests, before + 1) << command;
    EXPECT_EQ(views.signIn, nullptr) << command;
    secrets.userAnswers(true);
  }
}

TEST_F(SigningInTest, SigningOutOfALockedStoreAsksForItToo) {
  signIn();
  launch();
  secrets.othersLock();
  statusItem().choose("Sign out of VELK");
  EXPECT_EQ(secrets.unlockRequests, 1u);
  EXPECT_TRUE(signInPanel().visible);
  secrets.userAnswers(true);
  EXPECT_EQ(secrets.refreshToken(), std::nullopt);
  EXPECT_EQ(statusItem().lines()[0], "Sign in to VELK…");
}

TEST_F(SigningInTest, RetryNowAsksForALockedStoreAsWell) {
  hasANoteWaiting();
  signIn();
  service.isUnreachable("offline");
  launch();
  service.recovers();
  secrets.othersLock();
  statusItem().choose("Retry now");
  EXPECT_EQ(secrets.unlockRequests, 1u);
  secrets.userAnswers(true);
  EXPECT_THAT(app().outbox, IsEmpty());
}

TEST_F(SigningInTest, ATokenThatCameWhileTheStoreLockedIsSavedWhenItOpens) {
  signIn();
  launch();
  clock.set(clock.now() + Date(7200));
  service.holdsAnswers();
  app().refreshParticipants(true);
  secrets.othersLock();
  service.releasesAll();
  EXPECT_EQ(secrets.refreshToken(), "refresh-2");
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_EQ(statusItem().lines()[0], "(Signed in as ada@velk.example)");
  statusItem().choose("Reload participants");
  EXPECT_EQ(secrets.unlockRequests, 1u);
  secrets.userAnswers(true);
  EXPECT_EQ(secrets.refreshToken(), "refresh-3");
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
  restart();
  EXPECT_EQ(views.signIn, nullptr);
}

TEST_F(SigningInTest, ASignInThatMayNotBeSavedLastsUntilTheEnd) {
  secrets.othersLock();
  launch();
  signInWithPanel();
  secrets.userAnswers(false);
  EXPECT_EQ(views.signIn, nullptr);
  EXPECT_EQ(statusItem().lines()[0], "(Signed in as ada@velk.example)");
  advance(7200);
  app().refreshParticipants(false);
  loop.runPosted();
  EXPECT_EQ(notifier.shown.back(), WATCHING);
  EXPECT_EQ(secrets.unlockRequests, 1u);
  restart();
  EXPECT_TRUE(signInPanel().visible);
}

}  // namespace
}  // namespace notewick
