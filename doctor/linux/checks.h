#pragma once

#include <vector>

#include "doctor/linux/check_run.h"

namespace notewick {

/// Each looks at the user's desktop through the program's own ports and rooms, and changes nothing:
/// it makes no file or folder, starts no service, and asks the user nothing. It needs a registered
/// platform and the constants, and a process of its own (runChecks).

/// Versions, session, titles, tray, secret store. `argv` begins with the program's name and stays.
[[nodiscard]] std::vector<Check> desktopChecks(char** argv);
/// Address, proxy, service.
[[nodiscard]] std::vector<Check> serviceChecks();
/// The three lists, the files, start at login.
[[nodiscard]] std::vector<Check> fileChecks();

}  // namespace notewick
