#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "app/entry.h"
#include "client/velk_client.h"
#include "tests/ui/signing_in_world.h"
#include "ui/login_controller.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- The panel -----------------------------------------------------------------------------------

TEST_F(SigningInTest, AfterASignInItGreetsLoadsAndSends) {
  hasANoteWaiting();
  launch();
  signInWithPanel();
  EXPECT_THAT(service.trail(),
              ElementsAre("POST /api/desktop/auth/login", "GET /api/desktop/participants",
                          "POST /api/desktop/case-notes/capture"));
  EXPECT_THAT(notifier.shown,
              ElementsAre(Notification{"VELK Notewick", "Signed in as ada@velk.example."}, WATCHING,
                          CAPTURED));
  EXPECT_THAT(app().outbox, IsEmpty());
  EXPECT_TRUE(widget().visible);
  EXPECT_EQ(statusItem().lines()[0], "(Signed in as ada@velk.example)");
}

TEST_F(SigningInTest, WithoutAnEmailItGreetsYourAccount) {
  launch();
  service.answers(LOGIN_PATH, 200,
                  {{"accessToken", "A"}, {"refreshToken", service.backend.issueRefreshToken()}});
  signInWithPanel();
  EXPECT_EQ(notifier.shown.front().body, "Signed in as your VELK account.");
}

TEST_F(SigningInTest, TheMenuCommandBringsTheOpenPanelForward) {
  launch();
  signInPanel().type("ada@velk.example", "half");
  statusItem().choose("Sign in to VELK…");
  EXPECT_EQ(signInPanel().presented, 2);
  EXPECT_EQ(signInPanel().typedPassword, "half");
  EXPECT_EQ(views.signInsMade, 1);
}

TEST_F(SigningInTest, TheMenuCommandOpensAFreshPanelAfterAClose) {
  launch();
  signInPanel().type("ada@velk.example", "half");
  signInPanel().close();
  loop.runPosted();
  statusItem().choose("Sign in to VELK…");
  EXPECT_EQ(signInPanel().typedEmail, "");
  EXPECT_EQ(views.signInsMade, 2);
  signInWithPanel();
  EXPECT_THAT(app().participants, SizeIs(2));
}

TEST_F(SigningInTest, ASignInAfterTheEndOfTheProgramTellsNobody) {
  launch();
  const auto controller = LoginController::current();
  delegate = nullptr;
  signInPanel().type("ada@velk.example", "correct horse");
  signInPanel().pressSignIn();
  loop.runPosted();
  EXPECT_THAT(notifier.shown, IsEmpty());
  EXPECT_THAT(service.trail(), ElementsAre("POST /api/desktop/auth/login"));
}

TEST_F(SigningInTest, ALateRefusalOfTheOldSessionDoesNotEndANewOne) {
  hasANoteWaiting();
  signIn();
  service.backend.revokeTokens();
  service.holdsAnswers();
  launch();
  ASSERT_EQ(service.heldAnswers(), 2u) << "the list's refresh and the note's";
  service.releases(0);
  signInWithPanel();
  service.releases(1);
  ASSERT_EQ(views.signIn, nullptr) << "signed in anew";
  service.releasesAll();
  EXPECT_TRUE(VELKClient::shared().isSignedIn());
  EXPECT_EQ(views.signIn, nullptr);
}

// --- A panel that a failure opens ----------------------------------------------------------------

class ExpiredSessionTest : public SigningInTest {
 protected:
  /// The session of the running program ends, and a note waits.
  ExpiredSessionTest() {
    hasANoteWaiting();
    signIn();
    service.backend.revokeTokens();
    launch();
  }

  void closesThePanel() {
    signInPanel().close();
    loop.runPosted();
  }
};

TEST_F(ExpiredSessionTest, ThePanelTakesTheKeyboardTheFirstTime) {
  EXPECT_TRUE(signInPanel().key);
}

TEST_F(ExpiredSessionTest, OnceClosedItComesBackWithoutTheKeyboard) {
  closesThePanel();
  advance(60);
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_FALSE(signInPanel().key);
}

TEST_F(ExpiredSessionTest, ThePanelThatCameQuietlySignsInLikeAnyOther) {
  closesThePanel();
  advance(60);
  signInWithPanel();
  EXPECT_THAT(app().outbox, IsEmpty());
  EXPECT_EQ(views.signIn, nullptr);
}

TEST_F(ExpiredSessionTest, TheSignInCommandGivesItTheKeyboardAllTheSame) {
  closesThePanel();
  advance(60);
  statusItem().choose("Sign in to VELK…");
  EXPECT_TRUE(signInPanel().key);
}

TEST_F(ExpiredSessionTest, AfterASignInTheNextFailureTakesTheKeyboardAgain) {
  signInWithPanel();
  service.backend.revokeTokens();
  app().reloadParticipants();
  loop.runPosted();
  app().reloadParticipants();
  loop.runPosted();
  EXPECT_TRUE(signInPanel().key);
}

TEST_F(SigningInTest, ThePanelOfALaunchThatWasClosedComesBackWithoutTheKeyboard) {
  hasANoteWaiting();
  launch();
  EXPECT_TRUE(signInPanel().key);
  signInPanel().close();
  loop.runPosted();
  advance(60);
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_FALSE(signInPanel().key);
}

TEST_F(SigningInTest, AfterADeliberateSignOutNoLateAnswerOpensAPanel) {
  hasANoteWaiting();
  signIn();
  service.holdsAnswers();
  launch();
  service.backend.revokeTokens();
  statusItem().choose("Sign out of VELK");
  signInPanel().close();
  loop.runPosted();
  service.releasesAll();
  EXPECT_EQ(views.signIn, nullptr);
}

}  // namespace
}  // namespace notewick
