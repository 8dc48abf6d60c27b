#include "tests/support/fake_views.h"

namespace notewick {

std::unique_ptr<StatusItem> FakeViews::makeStatusItem(const StatusItemAppearance& appearance,
                                                      std::weak_ptr<StatusItemTarget> target) {
  auto item = std::make_unique<FakeStatusItem>(*this, appearance, std::move(target));
  statusItem = item.get();
  trace.push_back("status item");
  return item;
}

std::unique_ptr<QuickNotePanel> FakeViews::makeQuickNotePanel(
    const QuickNoteTexts& texts, std::weak_ptr<QuickNotePanelDelegate> delegate) {
  auto panel = std::make_unique<FakeQuickNotePanel>(*this, texts, std::move(delegate));
  quickNote = panel.get();
  ++quickNotesMade;
  return panel;
}

std::unique_ptr<SignInPanel> FakeViews::makeSignInPanel(
    const SignInTexts& texts, std::weak_ptr<SignInPanelDelegate> delegate) {
  auto panel = std::make_unique<FakeSignInPanel>(*this, texts, std::move(delegate));
  signIn = panel.get();
  trace.push_back("sign-in panel");
  ++signInsMade;
  ++signInsAlive;
  return panel;
}

void FakeViews::forget(const FakeStatusItem* item) {
  if (statusItem == item) statusItem = nullptr;
}

void FakeViews::forget(const FakeQuickNotePanel* panel) {
  if (quickNote == panel) quickNote = nullptr;
}

void FakeViews::forget(const FakeSignInPanel* panel) {
  if (signIn == panel) signIn = nullptr;
  --signInsAlive;
}

}  // namespace notewick
