#pragma once

#include <string>

#include "platform/process_launcher.h"

namespace notewick {

/// Posts a desktop notification. A name from the service may be megabytes long, which a desktop's
/// message bus answers by closing the connection: a title is cut to 200 grapheme clusters and 2
/// KiB, a body to 2,000 and 16 KiB, then "…". Main thread; failures are swallowed.
void notify(const std::string& title, const std::string& body);

/// The AppleScript that shows a notification with a sound; quotes and backslashes are escaped.
[[nodiscard]] std::string notificationScript(const std::string& title, const std::string& body);

/// The command that runs that script.
[[nodiscard]] Command notificationCommand(const std::string& title, const std::string& body);

}  // namespace notewick
