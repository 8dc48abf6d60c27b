#pragma once

#include <QPointer>

#include "platform/linux/status_item.h"
#include "platform/views.h"

namespace notewick {

class UserDefaults;

/// Makes the views in widgets; needs Qt's application object. It must outlive the panels
/// it made.
class QtViews final : public Views {
 public:
  /// The panels keep their places in `userDefaults`.
  explicit QtViews(UserDefaults& userDefaults) : userDefaults_(userDefaults) {}

  /// All windows of the program carry its symbol from then on.
  [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(
      const StatusItemAppearance& appearance, std::weak_ptr<StatusItemTarget> target) override;
  [[nodiscard]] std::unique_ptr<QuickNotePanel> makeQuickNotePanel(
      const QuickNoteTexts& texts, std::weak_ptr<QuickNotePanelDelegate> delegate) override;
  [[nodiscard]] std::unique_ptr<SignInPanel> makeSignInPanel(
      const SignInTexts& texts, std::weak_ptr<SignInPanelDelegate> delegate) override;

 private:
  UserDefaults& userDefaults_;
  QPointer<QtStatusItem> statusItem_;
};

}  // namespace notewick
