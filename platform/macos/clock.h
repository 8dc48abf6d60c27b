#pragma once

#include "platform/clock.h"

namespace notewick {

/// The system's wall clock, and the Gregorian calendar in the time zone that is set now.
class CocoaClock final : public Clock {
 public:
  [[nodiscard]] std::chrono::duration<double> now() const override;
  [[nodiscard]] CivilTime localTime(std::chrono::duration<double> time) const override;
};

}  // namespace notewick
