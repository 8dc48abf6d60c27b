#pragma once

#include <memory>

#include "platform/views.h"
#include "tests/support/fake_quick_note_panel.h"
#include "tests/support/fake_sign_in_panel.h"
#include "tests/support/fake_status_item.h"
#include "tests/support/trace.h"

namespace notewick {

/// Makes the views and shows a test the ones that exist now.
class FakeViews : public Views {
 public:
  explicit FakeViews(Trace& worldTrace) : trace(worldTrace) {}

  [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(
      const StatusItemAppearance& appearance, std::weak_ptr<StatusItemTarget> target) override;
  [[nodiscard]] std::unique_ptr<QuickNotePanel> makeQuickNotePanel(
      const QuickNoteTexts& texts, std::weak_ptr<QuickNotePanelDelegate> delegate) override;
  [[nodiscard]] std::unique_ptr<SignInPanel> makeSignInPanel(
      const SignInTexts& texts, std::weak_ptr<SignInPanelDelegate> delegate) override;

  Trace& trace;

  // The newest view of its kind; null when it does not exist (any longer).
  FakeStatusItem* statusItem = nullptr;
  FakeQuickNotePanel* quickNote = nullptr;
  FakeSignInPanel* signIn = nullptr;

  bool hasTray = true;  ///< the desktop shows status items

  int quickNotesMade = 0;
  int signInsMade = 0;
  int signInsAlive = 0;
  bool frameSaved = false;  ///< the quick-note panel was moved by the user once, in any run

  void forget(const FakeStatusItem* item);
  void forget(const FakeQuickNotePanel* panel);
  void forget(const FakeSignInPanel* panel);
};

}  // namespace notewick
