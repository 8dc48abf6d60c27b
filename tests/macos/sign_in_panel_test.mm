#include "platform/macos/sign_in_panel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/bridge/text.h"
#include "tests/macos/view_search.h"

namespace notewick {
namespace {

const SignInTexts TEXTS = {
    "Sign in to VELK",
    "Sign in with your VELK account",
    "Notewick needs your VELK login so confirmed work becomes case notes in your account.",
    "Email",
    "name@agency.example",
    "Password",
    "Sign in"};

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
      if (utf8(field.placeholderString) == TEXTS.emailPlaceholder) return field;
    }
    return nil;
  }

  std::shared_ptr<RecordingDelegate> delegate_ = std::make_shared<RecordingDelegate>();
  std::unique_ptr<CocoaSignInPanel> panel_ = std::make_unique<CocoaSignInPanel>(TEXTS, delegate_);
};

TEST_F(MacosSignInPanelTest, IsAFloatingWindowThatOnlyCloses) {
  EXPECT_EQ(utf8(native().title), "Sign in to VELK");
  EXPECT_EQ(native().styleMask, NSWindowStyleMaskTitled | NSWindowStyleMaskClosable);
  EXPECT_EQ(native().level, NSFloatingWindowLevel);
  EXPECT_EQ(native().collectionBehavior, NSWindowCollectionBehaviorCanJoinAllSpaces |
                                             NSWindowCollectionBehaviorFullScreenAuxiliary);
  EXPECT_FALSE(native().hidesOnDeactivate);
  EXPECT_FALSE(native().releasedWhenClosed);
}

TEST_F(MacosSignInPanelTest, LaysItsControlsOutBelowEachOther) {
  NSStackView* contents = static_cast<NSStackView*>(native().contentView);
  EXPECT_EQ(contents.spacing, 10);
  EXPECT_EQ(contents.edgeInsets.top, 18);
  EXPECT_EQ(contents.edgeInsets.right, 18);
  EXPECT_EQ(contents.arrangedSubviews.count, 8U);
  EXPECT_EQ(laidOutWidth(contents), 380);
  EXPECT_EQ(laidOutWidth(email()), 344);
  EXPECT_EQ(laidOutWidth(password()), 344);
  EXPECT_EQ(textField(native(), TEXTS.heading).font.pointSize, 14);
  EXPECT_EQ(textField(native(), TEXTS.explanation).font.pointSize, 11);
  EXPECT_EQ(textField(native(), TEXTS.explanation).preferredMaxLayoutWidth, 340);
  EXPECT_NE(textField(native(), "Email"), nil);
  EXPECT_NE(textField(native(), "Password"), nil);
}

TEST_F(MacosSignInPanelTest, CallsEveryControlByAName) {
  EXPECT_EQ(utf8(email().accessibilityLabel), "Email");
  EXPECT_EQ(utf8(password().accessibilityLabel), "Password");
  EXPECT_EQ(utf8(signIn().accessibilityLabel), "Sign in");
  EXPECT_EQ(utf8(spinner().accessibilityLabel), "Sign in");
}

TEST_F(MacosSignInPanelTest, PresentsItselfWithTheKeyboardInTheEmailField) {
  panel_->present();
  EXPECT_TRUE(native().visible);
  EXPECT_NE(email().currentEditor, nil);
}

TEST_F(MacosSignInPanelTest, ShowsItselfWithoutTheKeyboardWhenAFailureOpensIt) {
  panel_->presentQuietly();
  EXPECT_TRUE(native().visible);
  EXPECT_FALSE(native().keyWindow);
}

TEST_F(MacosSignInPanelTest, ComesToTheFrontAgainWithTheKeyboardWhereItWas) {
  panel_->presentQuietly();
  panel_->orderFrontRegardless();
  EXPECT_TRUE(native().visible);
  EXPECT_FALSE(native().keyWindow);
  panel_->present();
  [native() makeFirstResponder:password()];
  panel_->orderFrontRegardless();
  EXPECT_NE(password().currentEditor, nil);
}

TEST_F(MacosSignInPanelTest, GivesWhatWasTypedAsItStands) {
  email().stringValue = @" dana@example.org ";
  password().stringValue = @" right horse ";
  EXPECT_EQ(panel_->email(), " dana@example.org ");
  EXPECT_EQ(panel_->password(), " right horse ");
}

TEST_F(MacosSignInPanelTest, SignsInByItsDefaultButton) {
  EXPECT_EQ(native().defaultButtonCell, signIn().cell);
  [signIn() performClick:nil];
  EXPECT_THAT(delegate_->log, testing::ElementsAre("sign in"));
}

TEST_F(MacosSignInPanelTest, TurnsItsSpinnerWhileBusy) {
  EXPECT_TRUE(spinner().hidden);
  panel_->setBusy(true);
  EXPECT_FALSE(spinner().hidden);
  EXPECT_FALSE(signIn().enabled);
  [signIn() performClick:nil];
  EXPECT_TRUE(delegate_->log.empty());
  panel_->setBusy(false);
  EXPECT_TRUE(spinner().hidden);
  EXPECT_TRUE(signIn().enabled);
}

TEST_F(MacosSignInPanelTest, GrowsWithItsErrorAndShrinksWithoutIt) {
  const CGFloat plain = NSHeight(native().frame);
  panel_->setError(
      "Invalid email or password. If you sign in to VELK with Google, set a password first "
      "via “Forgot password” at https://velk.example/login.");
  EXPECT_GT(NSHeight(native().frame), plain);
  EXPECT_EQ(laidOutWidth(native().contentView), 380);
  panel_->setError("");
  EXPECT_EQ(NSHeight(native().frame), plain);
}

TEST_F(MacosSignInPanelTest, LetsItsWordsBeCopiedButNotReachedByTheTabulatorKey) {
  panel_->setError("The address is not secure.");
  for (const std::string& words : {TEXTS.explanation, std::string("The address is not secure.")}) {
    NSTextField* label = textField(native(), words);
    EXPECT_TRUE(label.selectable);
    EXPECT_FALSE(label.editable);
    EXPECT_FALSE(label.canBecomeKeyView);
  }
  panel_->present();
  [native() selectKeyViewFollowingView:email()];
  EXPECT_NE(password().currentEditor, nil);
}

TEST_F(MacosSignInPanelTest, TellsOfAUserClosingIt) {
  panel_->present();
  panel_->orderOut();
  EXPECT_TRUE(delegate_->log.empty());
  panel_->present();
  [native() performClose:nil];
  EXPECT_THAT(delegate_->log, testing::ElementsAre("close"));
}

}  // namespace
}  // namespace notewick
