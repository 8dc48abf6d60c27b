#pragma once

#include <memory>

#include "platform/linux/panels/floating_panel.h"
#include "platform/sign_in_panel.h"

class QLineEdit;

namespace notewick {

class AnnouncingLabel;
class Spinner;

/// The sign-in panel in widgets.
class QtSignInPanel final : public SignInPanel {
 public:
  QtSignInPanel(const SignInTexts& texts, std::weak_ptr<SignInPanelDelegate> delegate);

  void orderFrontRegardless() override { window_.orderFrontRegardless(); }
  void makeKeyAndOrderFront() override { window_.makeKeyAndOrderFront(); }
  void orderOut() override { window_.orderOut(); }

  void present() override;
  void presentQuietly() override;
  [[nodiscard]] std::string email() const override;
  [[nodiscard]] std::string password() const override;
  void setError(const std::string& text) override;
  void setBusy(bool busy) override;

  /// The window itself, for tests.
  [[nodiscard]] QWidget& window() { return window_; }

 private:
  void build(const SignInTexts& texts);
  [[nodiscard]] QWidget* buttonRow(const std::string& title);
  [[nodiscard]] QWidget* signInButton(const std::string& title);

  std::weak_ptr<SignInPanelDelegate> delegate_;
  PanelWindow window_;
  QLineEdit* email_ = nullptr;
  QLineEdit* password_ = nullptr;
  AnnouncingLabel* error_ = nullptr;
  QPushButton* signIn_ = nullptr;
  Spinner* spinner_ = nullptr;
};

}  // namespace notewick
