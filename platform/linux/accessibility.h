#pragma once

#include <QObject>
#include <memory>

#include "platform/accessibility.h"
#include "platform/linux/atspi/atspi_bus.h"
#include "platform/linux/atspi/consent_question.h"

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

/// Trust where titles come from the AT-SPI bus: given while the desktop's setting for it is
/// on. The setting outlives this program, so only the user's yes turns it on.
class AtspiTrust final : public QObject, public Accessibility {
 public:
  explicit AtspiTrust(std::shared_ptr<AtspiBus> bus);

  [[nodiscard]] bool isTrusted() override;
  bool isTrustedWithPrompt() override;
  [[nodiscard]] TrustRemedy remedy() const override { return TrustRemedy::prompt; }

 private:
  void askIfWanted();

  std::shared_ptr<AtspiBus> bus_;
  ConsentQuestion question_;
  bool isQuestionWanted_ = false;
};

}  // namespace notewick
