#pragma once

#include <string>

#include "platform/process_launcher.h"

namespace notewick {

/// Posts a desktop notification. Main thread; failures are swallowed.
void notify(const std::string& title, const std::string& body);

/// The AppleScript that shows a notification with a sound; quotes and backslashes are escaped.
[[nodiscard]] std::string notificationScript(const std::string& title, const std::string& body);

/// The command that runs that script.
[[nodiscard]] Command notificationCommand(const std::string& title, const std::string& body);

}  // namespace notewick
