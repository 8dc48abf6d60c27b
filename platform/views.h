#pragma once

#include <memory>

#include "platform/quick_note_panel.h"
#include "platform/sign_in_panel.h"
#include "platform/status_item.h"

namespace notewick {

/// Makes the views. Main thread. A view holds its delegate weakly and drops what happens after the
/// delegate is gone. A panel must not be destroyed inside a call to its delegate.
class Views {
 public:
  virtual ~Views() = default;

  [[nodiscard]] virtual std::unique_ptr<StatusItem> makeStatusItem(
      const StatusItemAppearance& appearance, std::weak_ptr<StatusItemTarget> target) = 0;
  [[nodiscard]] virtual std::unique_ptr<QuickNotePanel> makeQuickNotePanel(
      const QuickNoteTexts& texts, std::weak_ptr<QuickNotePanelDelegate> delegate) = 0;
  [[nodiscard]] virtual std::unique_ptr<SignInPanel> makeSignInPanel(
      const SignInTexts& texts, std::weak_ptr<SignInPanelDelegate> delegate) = 0;
};

}  // namespace notewick
