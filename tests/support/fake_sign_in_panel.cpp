#include "tests/support/fake_sign_in_panel.h"

#include "tests/support/fake_views.h"

namespace notewick {

FakeSignInPanel::FakeSignInPanel(FakeViews& views, SignInTexts fixedTexts,
                                 std::weak_ptr<SignInPanelDelegate> owner)
    : FakePanel(std::move(owner)), texts(std::move(fixedTexts)), views_(views) {}

FakeSignInPanel::~FakeSignInPanel() {
  views_.forget(this);
}

void FakeSignInPanel::present() {
  makeKeyAndOrderFront();
  ++presented;
}

void FakeSignInPanel::type(const std::string& newEmail, const std::string& newPassword) {
  typedEmail = newEmail;
  typedPassword = newPassword;
}

void FakeSignInPanel::pressSignIn() {
  if (!busy) callDelegate([](auto& delegate) { delegate.signIn(); });
}

void FakeSignInPanel::close() {
  closeByUser();
}

}  // namespace notewick
