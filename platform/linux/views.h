#pragma once

#include <QPointer>

#include "platform/linux/status_item.h"
#include "platform/views.h"

namespace notewick {

/// Makes the views in widgets; needs the toolkit's application object. It must outlive the panels
/// it made.
class QtViews final : public Views {
 public:
  [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(
      const StatusItemAppearance& appearance, std::weak_ptr<StatusItemTarget> target) override;
  [[nodiscard]] std::unique_ptr<QuickNotePanel> makeQuickNotePanel(
      const QuickNoteTexts& texts, std::weak_ptr<QuickNotePanelDelegate> delegate) override;
  [[nodiscard]] std::unique_ptr<SignInPanel> makeSignInPanel(
      const SignInTexts& texts, std::weak_ptr<SignInPanelDelegate> delegate) override;

 private:
  QPointer<QtStatusItem> statusItem_;
};

}  // namespace notewick
