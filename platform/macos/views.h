#pragma once

#include "platform/views.h"

namespace notewick {

/// Makes the views in native controls; needs the shared application object.
class CocoaViews final : public Views {
 public:
  [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(
      const StatusItemAppearance& appearance, std::weak_ptr<StatusItemTarget> target) override;
  [[nodiscard]] std::unique_ptr<QuickNotePanel> makeQuickNotePanel(
      const QuickNoteTexts& texts, std::weak_ptr<QuickNotePanelDelegate> delegate) override;
  [[nodiscard]] std::unique_ptr<SignInPanel> makeSignInPanel(
      const SignInTexts& texts, std::weak_ptr<SignInPanelDelegate> delegate) override;
};

}  // namespace notewick
