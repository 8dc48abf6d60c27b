#pragma once

#include "platform/accessibility.h"

namespace notewick {

/// Trust as the user gives it in the system's list of programs that may control the computer.
class AccessibilityTrust final : public Accessibility {
 public:
  [[nodiscard]] bool isTrusted() override;
  bool isTrustedWithPrompt() override;
  [[nodiscard]] TrustRemedy remedy() const override { return TrustRemedy::settingsPage; }
};

}  // namespace notewick
