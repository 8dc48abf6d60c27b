#pragma once

#include "platform/clock.h"

namespace notewick {

/// The system's wall clock and the C library's calendar.
///
/// The C library looks at /etc/localtime again at every call while TZ is not set. Where TZ names a
/// file it reads that file once and never again, so this class has it read again when the file has
/// changed. Times outside the years 1 to 9999 are shown as the nearest time inside them.
class SystemClock : public Clock {
 public:
  [[nodiscard]] std::chrono::duration<double> now() const override;
  [[nodiscard]] CivilTime localTime(std::chrono::duration<double> time) const override;
};

}  // namespace notewick
