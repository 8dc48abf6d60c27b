#include "ui/login_controller.h"

#include <gmock/gmock.h>

#include "client/velk_client.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::FieldsAre;
using testing::IsEmpty;
using testing::SizeIs;

class LoginPanelTest : public WorldTest {
 protected:
  LoginPanelTest() { open(); }

  void open() {
    LoginController::create([this] { ++signedIn; })->show();
  }

  void presses(const std::string& email, const std::string& password) {
    signInPanel().type(email, password);
    signInPanel().pressSignIn();
  }
  /// The same, and the answer is there.
  void signsInAs(const std::string& email, const std::string& password) {
    presses(email, password);
    loop.runPosted();
  }

  /// What the panel says when the service answers so.
  std::string errorAfter(int status, const json& body = json::object()) {
    service.answers(LOGIN_PATH, status, body);
    signsInAs("ada@velk.example", "x");
    return signInPanel().error;
  }

  int signedIn = 0;
};

// --- Opening -------------------------------------------------------------------------------------

TEST_F(LoginPanelTest, ShowsItsFixedTexts) {
  EXPECT_THAT(signInPanel().texts,
              FieldsAre("Sign in to VELK", "Sign in with your VELK account",
                        "Notewick needs your VELK login so confirmed work becomes case notes in "
                        "your account.",
                        "Email", testing::HasSubstr("@"), "Password", "Sign in"));
}

TEST_F(LoginPanelTest, OpensWithTheKeyboardOnceItIsShown) {
  EXPECT_TRUE(signInPanel().key);
  EXPECT_NE(LoginController::current(), nullptr);
  const auto another = LoginController::create([] {});
  EXPECT_FALSE(signInPanel().visible);
  EXPECT_NE(LoginController::current(), another);
}

// --- Signing in ----------------------------------------------------------------------------------

TEST_F(LoginPanelTest, WithoutEmailOrPasswordNothingIsSent) {
  for (const auto& [email, password] :
       {std::pair("", "x"), {" \t\u00a0\u2003", "x"}, {"ada@velk.example", ""}}) {
    signInPanel().setError("");
    signsInAs(email, password);
    EXPECT_EQ(signInPanel().error, "Enter your email and password.") << email;
    EXPECT_FALSE(signInPanel().busy);
  }
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(LoginPanelTest, OnlyBlanksAroundTheEmailAreTrimmed) {
  signsInAs(" \t\nada@velk.example\n ", "  ");
  EXPECT_EQ(service.requests.front().json(),
            json({{"email", "\nada@velk.example\n"}, {"password", "  "}}));
}

TEST_F(LoginPanelTest, WhileARequestIsUnderWayThePanelIsBusyAndSendsNoOther) {
  signInPanel().setError("old");
  presses("ada@velk.example", "correct horse");
  EXPECT_TRUE(signInPanel().busy);
  EXPECT_EQ(signInPanel().error, "");
  EXPECT_TRUE(signInPanel().visible);
  LoginController::current()->signIn();
  EXPECT_THAT(service.requests, SizeIs(1));
}

TEST_F(LoginPanelTest, AfterASuccessThePanelIsGoneBeforeAnybodyHears) {
  bool visible = true;
  LoginController::create([&] {
    ++signedIn;
    visible = signInPanel().visible;
    EXPECT_EQ(LoginController::current(), nullptr);
  })->show();
  signsInAs("ada@velk.example", "correct horse");
  EXPECT_EQ(signedIn, 1);
  EXPECT_FALSE(visible);
  EXPECT_EQ(views.signIn, nullptr);
}

// --- Failing -------------------------------------------------------------------------------------

TEST_F(LoginPanelTest, AFailureLeavesThePanelOpenForAnotherTry) {
  signsInAs("ada@velk.example", "wrong");
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_FALSE(signInPanel().busy);
  EXPECT_EQ(signedIn, 0);
  signsInAs("ada@velk.example", "correct horse");
  EXPECT_EQ(signedIn, 1);
}

TEST_F(LoginPanelTest, WrongCredentialsAreExplainedAndOtherReasonsShownAsTheyStand) {
  EXPECT_EQ(errorAfter(401, {{"error", "INVALID EMAIL OR PASSWORD"}}),
            "Invalid email or password. If you sign in to VELK with Google, set a password first "
            "via “Forgot password” at https://velk.example/login.");
  EXPECT_EQ(errorAfter(403, {{"error", "Account suspended"}}), "Account suspended");
  EXPECT_EQ(errorAfter(403, {{"error", "Call\n\u202E555"}}), "Call 555") << "on one line";
}

TEST_F(LoginPanelTest, AFailureInsideTheCallLeavesThePanelIdle) {
  defaults.setString("VELKBaseURL", "http://velk.example");
  presses("ada@velk.example", "correct horse");
  EXPECT_EQ(signInPanel().error, "The address is not secure.");
  EXPECT_FALSE(signInPanel().busy);
}

// --- Closing -------------------------------------------------------------------------------------

TEST_F(LoginPanelTest, ClosedByTheUserItIsGoneInALaterTurn) {
  signInPanel().close();
  EXPECT_EQ(LoginController::current(), nullptr);
  EXPECT_NE(views.signIn, nullptr) << "a window is not destroyed on its own call stack";
  loop.runPosted();
  EXPECT_EQ(views.signIn, nullptr);
}

TEST_F(LoginPanelTest, ClosedDuringARequestTheSignInHappensUnseen) {
  service.holdsAnswers();
  presses("ada@velk.example", "correct horse");
  signInPanel().close();
  loop.runPosted();
  EXPECT_EQ(views.signIn, nullptr);
  service.releasesAll();
  EXPECT_EQ(signedIn, 0) << "nobody is left to hear";
  EXPECT_TRUE(VELKClient::shared().isSignedIn());
}

TEST_F(LoginPanelTest, ClosedButStillAliveItReportsAndLeavesAPanelOpenedSince) {
  service.holdsAnswers();
  presses("ada@velk.example", "correct horse");
  const auto alive = LoginController::current();
  signInPanel().close();
  open();
  const auto newer = LoginController::current();
  service.releasesAll();
  EXPECT_EQ(signedIn, 1);
  EXPECT_EQ(LoginController::current(), newer);
  EXPECT_TRUE(signInPanel().visible);
}

}  // namespace
}  // namespace notewick
