#pragma once

#include <string>

#include "model/date.h"

namespace notewick {

/// Dates and times as records and labels show them: the user's time zone as it is now, Gregorian
/// calendar, ASCII digits, 24 hours. Without an argument, the current time. Main thread.

/// "yyyy-MM-dd"
[[nodiscard]] std::string dayStamp();
[[nodiscard]] std::string dayStamp(Date date);

/// "HH:mm"
[[nodiscard]] std::string timeStamp();
[[nodiscard]] std::string timeStamp(Date date);

/// "HH:mm:ss", the current time.
[[nodiscard]] std::string secondStamp();

}  // namespace notewick
