#include <gmock/gmock.h>

#include "app/app_delegate.h"
#include "app/entry.h"
#include "tests/ui/signing_in_world.h"
#include "ui/login_controller.h"

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- The panel -----------------------------------------------------------------------------------

TEST_F(SigningInTest, WithoutAnEmailGreetingAndMenuSayYourAccount) {
  launch();
  service.answers(LOGIN_PATH, 200,
                  {{"accessToken", "A"}, {"refreshToken", service.backend.issueRefreshToken()}});
  signInWithPanel();
  EXPECT_EQ(notifier.shown.front().body, "Signed in as your VELK account.");
  EXPECT_EQ(menuBegins(), "(Signed in as your VELK account)");
}

TEST_F(SigningInTest, TheMenuCommandBringsTheOpenPanelForwardOrOpensAFreshOne) {
  launch();
  signInPanel().type("ada@velk.example", "half");
  statusItem().choose(SIGN_IN);
  EXPECT_EQ(signInPanel().presented, 2);
  EXPECT_EQ(signInPanel().typedPassword, "half");
  closesThePanel();
  statusItem().choose(SIGN_IN);
  EXPECT_EQ(signInPanel().typedPassword, "");
  signInWithPanel();
  EXPECT_THAT(app().participants, SizeIs(2));
}

TEST_F(SigningInTest, ASignInAfterTheEndOfTheProgramReachesNobody) {
  launch();
  const auto controller = LoginController::current();
  delegate = nullptr;
  signInWithPanel();
  EXPECT_THAT(notifier.shown, IsEmpty());
  EXPECT_THAT(service.trail(), ElementsAre("POST /api/desktop/auth/login"));
}

// --- A panel that a failure opens ----------------------------------------------------------------

class ExpiredSessionTest : public SigningInTest {
 protected:
  /// The session of the running program ends, and a note waits: every flush fails.
  ExpiredSessionTest() {
    hasANoteWaiting();
    signIn();
    service.backend.revokeTokens();
    launch();
  }
};

TEST_F(ExpiredSessionTest, ThePanelTakesTheKeyboardTheFirstTimeOnly) {
  EXPECT_TRUE(signInPanel().key);
  closesThePanel();
  advance(60);
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_FALSE(signInPanel().key);
  statusItem().choose(SIGN_IN);
  EXPECT_TRUE(signInPanel().key) << "by the user's command";
}

TEST_F(ExpiredSessionTest, AnOpenPanelIsShownAgainAsItIs) {
  signInPanel().type("ada@velk.example", "half");
  signInPanel().orderOut();
  advance(60);
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_FALSE(signInPanel().key);
  EXPECT_EQ(signInPanel().typedPassword, "half");
}

TEST_F(ExpiredSessionTest, AfterASignInTheNextFailureTakesTheKeyboardAgain) {
  closesThePanel();
  advance(60);
  signInWithPanel();
  EXPECT_THAT(app().outbox, IsEmpty()) << "the panel that came quietly signs in like any other";
  sessionExpires();
  EXPECT_TRUE(signInPanel().key);
}

}  // namespace
}  // namespace notewick
