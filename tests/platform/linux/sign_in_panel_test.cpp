#include "platform/linux/sign_in_panel.h"

#include <QLabel>
#include <QLineEdit>
#include <QScreen>

#include "platform/linux/controls/spinner.h"
#include "tests/platform/linux/panels/panel_fixture.h"
#include "tests/support/linux_session.h"

namespace notewick {
namespace {

struct Delegate : SignInPanelDelegate {
  void signIn() override { log.push_back("sign in"); }
  void windowWillClose() override { log.push_back("closed"); }

  Log log;
};

class SignInPanelTest : public testing::Test {
 protected:
  void SetUp() override {
    panel_.present();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  }

  QWidget& window() { return panel_.window(); }
  QLineEdit& email() { return control<QLineEdit>(window(), "Email"); }
  QLineEdit& password() { return control<QLineEdit>(window(), "Password"); }
  QPushButton& signIn() { return control<QPushButton>(window(), "Sign in"); }

  QWidget& spinner() {
    for (QWidget* const candidate : window().findChildren<QWidget*>()) {
      if (dynamic_cast<Spinner*>(candidate) != nullptr) return *candidate;
    }
    throw std::runtime_error("no spinner");
  }

  std::shared_ptr<Delegate> delegate_ = std::make_shared<Delegate>();
  QtSignInPanel panel_{{"Sign in to VELK", "Sign in with your VELK account",
                        "Notewick needs your VELK login so confirmed work becomes case notes in "
                        "your account.",
                        "Email", "name@example.org", "Password", "Sign in"},
                       delegate_};
};

TEST_F(SignInPanelTest, ReadsLikeTheFormTopToBottom) {
  EXPECT_EQ(window().windowTitle(), QStringLiteral("Sign in to VELK"));
  EXPECT_EQ(visibleLabels(window()),
            (std::vector<std::string>{"Sign in with your VELK account",
                                      "Notewick needs your VELK login so confirmed work becomes "
                                      "case notes in your account.",
                                      "Email", "Password"}));
  EXPECT_EQ(email().placeholderText(), QStringLiteral("name@example.org"));
}

TEST_F(SignInPanelTest, StartsInTheEmailFieldInTheMiddleOfTheScreen) {
  EXPECT_TRUE(email().hasFocus());
  const QPoint middle = QGuiApplication::primaryScreen()->availableGeometry().center();
  EXPECT_TRUE(waitUntil(
      [&] { return (window().frameGeometry().center() - middle).manhattanLength() <= 2; }));
}

TEST_F(SignInPanelTest, GivesWhatWasTypedAndHidesThePassword) {
  QTest::keyClicks(&email(), " anna@example.org ");
  QTest::keyClicks(&password(), "s3cret ");
  EXPECT_EQ(panel_.email(), " anna@example.org ");
  EXPECT_EQ(panel_.password(), "s3cret ");
  EXPECT_FALSE(password().displayText().contains(QStringLiteral("s3cret")));
}

TEST_F(SignInPanelTest, SignsInWithReturnInEitherFieldOrTheButton) {
  QTest::keyClick(&email(), Qt::Key_Return);
  QTest::keyClick(&password(), Qt::Key_Enter);
  signIn().click();
  EXPECT_EQ(delegate_->log, (Log{"sign in", "sign in", "sign in"}));
}

TEST_F(SignInPanelTest, IsNotAskedToSignInTwiceWhileBusy) {
  panel_.setBusy(true);
  EXPECT_FALSE(signIn().isEnabled());
  EXPECT_TRUE(spinner().isVisible());
  QTest::keyClick(&email(), Qt::Key_Return);
  QTest::keyClick(&password(), Qt::Key_Return);
  EXPECT_EQ(delegate_->log, Log{});
  panel_.setBusy(false);
  EXPECT_FALSE(spinner().isVisible());
  QTest::keyClick(&password(), Qt::Key_Return);
  EXPECT_EQ(delegate_->log, Log{"sign in"});
}

TEST_F(SignInPanelTest, GrowsForALongErrorAndShrinksAgain) {
  const QSize before = window().size();
  panel_.setError("Enter your email and password.");
  const int oneLine = window().height();
  EXPECT_GT(oneLine, before.height());
  panel_.setError(
      "Invalid email or password. If you sign in to VELK with Google, set a password first via "
      "“Forgot password” at https://velk.example/login.");
  EXPECT_GT(window().height(), oneLine);
  EXPECT_EQ(window().width(), before.width());
  panel_.setError("");
  EXPECT_EQ(window().size(), before);
}

TEST_F(SignInPanelTest, AClickOnTheButtonLeavesTheKeyboardInTheField) {
  password().setFocus();
  QTest::mouseClick(&signIn(), Qt::LeftButton);
  panel_.setBusy(true);
  EXPECT_TRUE(password().hasFocus());
}

TEST_F(SignInPanelTest, ComesForwardWithItsContents) {
  QTest::keyClicks(&email(), "anna");
  password().setFocus();
  panel_.setError("Sign-in failed (500)");
  panel_.present();
  EXPECT_EQ(panel_.email(), "anna");
  EXPECT_TRUE(email().hasFocus());
  EXPECT_EQ(visibleLabels(window()).back(), "Sign-in failed (500)");
}

TEST_F(SignInPanelTest, TellsOfACloseByTheUserOnly) {
  panel_.orderOut();
  EXPECT_EQ(delegate_->log, Log{});
  panel_.present();
  closeByUser(window());
  EXPECT_EQ(delegate_->log, Log{"closed"});
}

TEST_F(SignInPanelTest, IsWorkedByTheKeyboardAloneAndNamesItsFieldsByTheirLabels) {
  EXPECT_EQ(tabOrder(), (std::vector<std::string>{"Email", "Password", "Sign in"}));
  std::vector<std::string> buddies;
  for (const QLabel* label : window().findChildren<QLabel*>()) {
    if (label->buddy() != nullptr)
      buddies.push_back(label->buddy()->accessibleName().toStdString());
  }
  EXPECT_EQ(buddies, (std::vector<std::string>{"Email", "Password"}));
}

TEST_F(SignInPanelTest, DropsWhatHappensAfterTheDelegateIsGone) {
  const std::weak_ptr<Delegate> gone = delegate_;
  delegate_.reset();
  signIn().click();
  closeByUser(window());
  EXPECT_TRUE(gone.expired());
}

}  // namespace
}  // namespace notewick
