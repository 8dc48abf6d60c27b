#pragma once

#include "platform/accessibility.h"

namespace notewick {

/// Trust that nothing can change: always given where every program may read titles, as under X11;
/// never where there is no way to read them. There is nothing to ask the user.
class FixedTrust final : public Accessibility {
 public:
  explicit FixedTrust(bool isTrusted) : isTrusted_(isTrusted) {}

  [[nodiscard]] bool isTrusted() override { return isTrusted_; }
  bool isTrustedWithPrompt() override { return isTrusted_; }
  [[nodiscard]] TrustRemedy remedy() const override { return TrustRemedy::prompt; }

 private:
  bool isTrusted_;
};

}  // namespace notewick
