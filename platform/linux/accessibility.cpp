#include "platform/linux/accessibility.h"

#include <utility>

namespace notewick {

AtspiTrust::AtspiTrust(std::shared_ptr<AtspiBus> bus) : bus_(std::move(bus)) {
  connect(bus_.get(), &AtspiBus::settingChanged, this, &AtspiTrust::askIfWanted);
}

bool AtspiTrust::isTrusted() {
  return bus_->connection().has_value();
}

bool AtspiTrust::isTrustedWithPrompt() {
  const bool isTrustedNow = isTrusted();
  isQuestionWanted_ = !isTrustedNow;
  askIfWanted();
  return isTrustedNow;
}

// A desktop that has not answered yet may well have the setting on.
void AtspiTrust::askIfWanted() {
  if (bus_->setting() == AtspiBus::Setting::unknown) return;
  const bool isWanted = std::exchange(isQuestionWanted_, false);
  if (isWanted && bus_->setting() == AtspiBus::Setting::off) {
    question_.ask([bus = bus_] { bus->turnOn(); });
  }
}

}  // namespace notewick
