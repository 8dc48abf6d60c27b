#include "platform/macos/sign_in_panel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/bridge/text.h"
#include "tests/macos/view_search.h"

namespace notewick {
namespace {

const SignInTexts SIGN_IN_TEXTS = {"Sign in to VELK",     "Heading",  "Explanation", "Email",
                                   "name@agency.example", "Password", "Sign in"};

class RecordingDelegate : public SignInPanelDelegate {
 public:
  void signIn() override { log.push_back("sign in"); }
  void windowWillClose() override { log.push_back("close"); }

  std::vector<std::string> log;
};

class MacosSignInPanelTest : public testing::Test {
 protected:
  [[nodiscard]] NSPanel* native() const { return panel_->native(); }
  [[nodiscard]] NSButton* signIn() const { return buttons(native(), "Sign in").at(0); }
  [[nodiscard]] NSProgressIndicator* spinner() const {
    return static_cast<NSProgressIndicator*>(viewsOf(native(), NSProgressIndicator.class).at(0));
  }
  [[nodiscard]] NSTextField* password() const {
    return static_cast<NSTextField*>(viewsOf(native(), NSSecureTextField.class).at(0));
  }
  [[nodiscard]] NSTextField* email() const {
    for (NSView* view : viewsOf(native(), NSTextField.class)) {
      NSTextField* field = static_cast<NSTextField*>(view);
      if (utf8(field.placeholderString) == SIGN_IN_TEXTS.emailPlaceholder) return field;
    }
    return nil;
  }

  std::shared_ptr<RecordingDelegate> delegate_ = std::make_shared<RecordingDelegate>();
  std::unique_ptr<CocoaSignInPanel> panel_ =
      std::make_unique<CocoaSignInPanel>(SIGN_IN_TEXTS, delegate_);
};

TEST_F(MacosSignInPanelTest, CallsEveryControlByAName) {
  EXPECT_EQ(utf8(email().accessibilityLabel), "Email");
  EXPECT_EQ(utf8(password().accessibilityLabel), "Password");
  EXPECT_EQ(utf8(signIn().accessibilityLabel), "Sign in");
  EXPECT_EQ(utf8(spinner().accessibilityLabel), "Sign in");
}

TEST_F(MacosSignInPanelTest, TakesTheKeyboardOnlyWhereItIsPresented) {
  panel_->presentQuietly();
  EXPECT_TRUE(native().visible);
  EXPECT_FALSE(native().keyWindow);
  panel_->orderFrontRegardless();
  EXPECT_FALSE(native().keyWindow);
  panel_->present();
  EXPECT_NE(email().currentEditor, nil);
  [native() makeFirstResponder:password()];
  panel_->orderFrontRegardless();
  EXPECT_NE(password().currentEditor, nil) << "stays where it was";
}

TEST_F(MacosSignInPanelTest, GivesWhatWasTypedAsItStandsByItsDefaultButton) {
  email().stringValue = @" dana@example.org ";
  password().stringValue = @" right horse ";
  EXPECT_EQ(native().defaultButtonCell, signIn().cell);
  [signIn() performClick:nil];
  EXPECT_THAT(delegate_->log, testing::ElementsAre("sign in"));
  EXPECT_EQ(panel_->email(), " dana@example.org ");
  EXPECT_EQ(panel_->password(), " right horse ");
}

TEST_F(MacosSignInPanelTest, TurnsItsSpinnerAndTakesNoPressWhileBusy) {
  for (const bool busy : {false, true, false}) {
    panel_->setBusy(busy);
    EXPECT_EQ(spinner().hidden, !busy);
    EXPECT_EQ(signIn().enabled, !busy);
  }
}

TEST_F(MacosSignInPanelTest, GrowsInHeightAloneWithItsErrorAndShrinksWithoutIt) {
  const NSSize plain = native().frame.size;
  panel_->setError(std::string(200, 'x') + " " + std::string(200, 'y'));
  EXPECT_GT(NSHeight(native().frame), plain.height);
  EXPECT_EQ(NSWidth(native().frame), plain.width);
  panel_->setError("");
  EXPECT_EQ(NSHeight(native().frame), plain.height);
}

TEST_F(MacosSignInPanelTest, LetsItsWordsBeCopiedButNotReachedByTheTabulatorKey) {
  panel_->setError("The address is not secure.");
  for (const std::string& words :
       {SIGN_IN_TEXTS.explanation, std::string("The address is not secure.")}) {
    NSTextField* label = textField(native(), words);
    EXPECT_TRUE(label.selectable);
    EXPECT_FALSE(label.editable);
    EXPECT_FALSE(label.canBecomeKeyView);
  }
  panel_->present();
  [native() selectKeyViewFollowingView:email()];
  EXPECT_NE(password().currentEditor, nil);
}

TEST_F(MacosSignInPanelTest, TellsOfAUserClosingItAlone) {
  panel_->present();
  panel_->orderOut();
  EXPECT_TRUE(delegate_->log.empty());
  panel_->present();
  [native() performClose:nil];
  EXPECT_THAT(delegate_->log, testing::ElementsAre("close"));
}

}  // namespace
}  // namespace notewick
