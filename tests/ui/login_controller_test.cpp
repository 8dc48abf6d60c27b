#include "ui/login_controller.h"

#include <gmock/gmock.h>

#include "client/velk_client.h"
#include "tests/support/world.h"

namespace notewick {
namespace {

using nlohmann::json;
using testing::IsEmpty;
using testing::SizeIs;

class LoginPanelTest : public WorldTest {
 protected:
  LoginPanelTest() { open(); }

  void open() {
    LoginController::create([this] { ++signedIn; })->show();
  }

  /// Fills in the panel and presses the button; the answer is there.
  void signsInAs(const std::string& email, const std::string& password) {
    signInPanel().type(email, password);
    signInPanel().pressSignIn();
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
  const auto& texts = signInPanel().texts;
  EXPECT_EQ(texts.title, "Sign in to VELK");
  EXPECT_EQ(texts.heading, "Sign in with your VELK account");
  EXPECT_EQ(texts.explanation,
            "Notewick needs your VELK login so confirmed work becomes case notes in your account.");
  EXPECT_EQ(texts.emailLabel, "Email");
  EXPECT_EQ(texts.passwordLabel, "Password");
  EXPECT_EQ(texts.signIn, "Sign in");
  EXPECT_THAT(texts.emailPlaceholder, testing::HasSubstr("@"));
}

TEST_F(LoginPanelTest, OpensEmptyAndIdle) {
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_TRUE(signInPanel().key);
  EXPECT_EQ(signInPanel().presented, 1);
  EXPECT_EQ(signInPanel().error, "");
  EXPECT_FALSE(signInPanel().busy);
  EXPECT_NE(LoginController::current(), nullptr);
}

TEST_F(LoginPanelTest, MakingItShowsNothing) {
  const auto another = LoginController::create([] {});
  EXPECT_FALSE(signInPanel().visible);
  EXPECT_NE(LoginController::current(), another);
}

TEST_F(LoginPanelTest, ShownAgainItComesForwardWithWhatWasTyped) {
  signInPanel().type("ada@velk.example", "half");
  LoginController::current()->show();
  EXPECT_EQ(signInPanel().presented, 2);
  EXPECT_EQ(signInPanel().typedPassword, "half");
}

// --- Checking the fields -------------------------------------------------------------------------

TEST_F(LoginPanelTest, WithoutEmailOrPasswordNothingIsSent) {
  for (const auto& [email, password] :
       {std::pair("", ""), std::pair("", "x"), std::pair("ada@velk.example", ""),
        std::pair("   ", "x"), std::pair(" \t\u00a0\u2003", "x")}) {
    signInPanel().setError("");
    signsInAs(email, password);
    EXPECT_EQ(signInPanel().error, "Enter your email and password.") << email;
    EXPECT_FALSE(signInPanel().busy);
  }
  EXPECT_THAT(service.requests, IsEmpty());
}

TEST_F(LoginPanelTest, BlanksAroundTheEmailAreTrimmedAndThePasswordIsNot) {
  signsInAs(" \tada@velk.example \t", "  secret ");
  EXPECT_EQ(service.requests.front().json(),
            json({{"email", "ada@velk.example"}, {"password", "  secret "}}));
}

TEST_F(LoginPanelTest, LineBreaksAroundTheEmailStay) {
  signsInAs("\nada@velk.example", "x");
  EXPECT_EQ(service.requests.front().json()["email"], "\nada@velk.example");
}

TEST_F(LoginPanelTest, APasswordOfBlanksIsAPassword) {
  signsInAs("ada@velk.example", "   ");
  EXPECT_THAT(service.requests, SizeIs(1));
}

// --- Signing in ----------------------------------------------------------------------------------

TEST_F(LoginPanelTest, WhileARequestIsUnderWayThePanelIsBusy) {
  signInPanel().setError("old");
  signInPanel().type("ada@velk.example", "correct horse");
  signInPanel().pressSignIn();
  EXPECT_TRUE(signInPanel().busy);
  EXPECT_EQ(signInPanel().error, "");
  EXPECT_TRUE(signInPanel().visible);
}

TEST_F(LoginPanelTest, OnePanelSendsOneRequestAtATime) {
  signInPanel().type("ada@velk.example", "correct horse");
  const auto controller = LoginController::current();
  controller->signIn();
  controller->signIn();
  EXPECT_THAT(service.requests, SizeIs(1));
}

TEST_F(LoginPanelTest, SuccessClosesThePanelAndTellsOnce) {
  signsInAs("ada@velk.example", "correct horse");
  EXPECT_EQ(signedIn, 1);
  EXPECT_EQ(LoginController::current(), nullptr);
  EXPECT_EQ(views.signIn, nullptr);
}

TEST_F(LoginPanelTest, ThePanelIsOffTheScreenBeforeTheNewsIsTold) {
  bool visible = true;
  LoginController::current() = nullptr;
  loop.runPosted();
  LoginController::create([&] {
    visible = signInPanel().visible;
    EXPECT_EQ(LoginController::current(), nullptr);
  })->show();
  signsInAs("ada@velk.example", "correct horse");
  EXPECT_FALSE(visible);
}

// --- Failing -------------------------------------------------------------------------------------

TEST_F(LoginPanelTest, AFailureLeavesThePanelOpenWithItsFields) {
  signsInAs("ada@velk.example", "wrong");
  EXPECT_TRUE(signInPanel().visible);
  EXPECT_FALSE(signInPanel().busy);
  EXPECT_EQ(signInPanel().typedEmail, "ada@velk.example");
  EXPECT_EQ(signInPanel().typedPassword, "wrong");
  EXPECT_EQ(signedIn, 0);
  signsInAs("ada@velk.example", "correct horse");
  EXPECT_EQ(signedIn, 1);
}

TEST_F(LoginPanelTest, WrongCredentialsGetTheLongerExplanation) {
  const std::string explanation =
      "Invalid email or password. If you sign in to VELK with Google, set a password first via "
      "“Forgot password” at https://velk.example/login.";
  EXPECT_EQ(errorAfter(401, {{"error", "Invalid email or password"}}), explanation);
  EXPECT_EQ(errorAfter(400, {{"error", "INVALID EMAIL OR PASSWORD"}}), explanation);
  EXPECT_EQ(errorAfter(200, {{"error", "Sorry: invalid Email or Password!"}}), explanation);
}

TEST_F(LoginPanelTest, WrongCredentialsAreFoundBeyondWhatIsShownOfAReason) {
  const std::string dots(1000, '.');
  EXPECT_EQ(errorAfter(401, {{"error", dots + "."}}), dots + "…");
  EXPECT_THAT(errorAfter(401, {{"error", dots + "Invalid email or password"}}),
              testing::StartsWith("Invalid email or password. If you sign in"));
}

TEST_F(LoginPanelTest, TheExplanationNamesTheServiceInForce) {
  defaults.setString("VELKBaseURL", "http://127.0.0.1:8080/velk/");
  EXPECT_THAT(errorAfter(401, {{"error", "Invalid email or password"}}),
              testing::EndsWith(" at http://127.0.0.1:8080/login."));
}

TEST_F(LoginPanelTest, AnyOtherReasonIsShownAsItStands) {
  EXPECT_EQ(errorAfter(403, {{"error", "Account suspended"}}), "Account suspended");
  EXPECT_EQ(errorAfter(401, {{"error", "Invalid password"}}), "Invalid password");
  EXPECT_EQ(errorAfter(500), "Sign-in failed (500)");
}

TEST_F(LoginPanelTest, ATransportErrorIsShownAsItStands) {
  service.fails(LOGIN_PATH, "Could not connect");
  signsInAs("ada@velk.example", "x");
  EXPECT_EQ(signInPanel().error, "Could not connect");
  service.fails(LOGIN_PATH, "invalid email or password");
  signsInAs("ada@velk.example", "x");
  EXPECT_EQ(signInPanel().error, "invalid email or password") << "only the service can say so";
}

TEST_F(LoginPanelTest, AnAddressThatIsNotSecureIsToldAtOnceAndNothingIsSent) {
  defaults.setString("VELKBaseURL", "http://velk.example");
  signInPanel().type("ada@velk.example", "correct horse");
  signInPanel().pressSignIn();
  EXPECT_EQ(signInPanel().error, "The address is not secure.");
  EXPECT_FALSE(signInPanel().busy);
  EXPECT_THAT(service.requests, IsEmpty());
}

// --- Closing -------------------------------------------------------------------------------------

TEST_F(LoginPanelTest, ClosedByTheUserItIsGoneInALaterTurn) {
  signInPanel().close();
  EXPECT_EQ(LoginController::current(), nullptr);
  EXPECT_EQ(views.signInsAlive, 1) << "a window is not destroyed on its own call stack";
  loop.runPosted();
  EXPECT_EQ(views.signInsAlive, 0);
  EXPECT_EQ(signedIn, 0);
}

TEST_F(LoginPanelTest, ANewOpeningAfterACloseStartsEmpty) {
  signInPanel().type("ada@velk.example", "half");
  signInPanel().close();
  loop.runPosted();
  open();
  EXPECT_EQ(signInPanel().typedEmail, "");
  EXPECT_EQ(signInPanel().typedPassword, "");
}

TEST_F(LoginPanelTest, ClosedDuringARequestTheSignInHappensUnseen) {
  service.holdsAnswers();
  signInPanel().type("ada@velk.example", "correct horse");
  signInPanel().pressSignIn();
  signInPanel().close();
  loop.runPosted();
  EXPECT_EQ(views.signInsAlive, 0);
  service.releasesAll();
  EXPECT_EQ(signedIn, 0) << "nobody is left to be told";
  EXPECT_TRUE(VELKClient::shared().isSignedIn());
}

TEST_F(LoginPanelTest, ClosedDuringARequestButStillAliveItTells) {
  service.holdsAnswers();
  signInPanel().type("ada@velk.example", "correct horse");
  signInPanel().pressSignIn();
  const auto alive = LoginController::current();
  signInPanel().close();
  service.releasesAll();
  EXPECT_EQ(signedIn, 1);
}

TEST_F(LoginPanelTest, ALateSuccessDoesNotCloseAPanelOpenedSince) {
  service.holdsAnswers();
  signInPanel().type("ada@velk.example", "correct horse");
  signInPanel().pressSignIn();
  const auto old = LoginController::current();
  signInPanel().close();
  open();
  const auto newer = LoginController::current();
  service.releasesAll();
  EXPECT_EQ(LoginController::current(), newer);
  EXPECT_TRUE(signInPanel().visible);
}

}  // namespace
}  // namespace notewick
