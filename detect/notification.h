#pragma once

#include <functional>
#include <string>

#include "platform/process_launcher.h"

namespace notewick {

/// Posts a desktop notification. Main thread; failures are swallowed. A title is cut to 200
/// grapheme clusters and 2 KiB, a body to 2,000 and 16 KiB, and "…" marks the cut: a name from the
/// service may be megabytes long, and a desktop's message bus closes a connection that sends so
/// much. `clicked` is called when the user clicks it, where the system tells of clicks.
void notify(const std::string& title, const std::string& body, std::function<void()> clicked);

/// The AppleScript that shows a notification with a sound; quotes and backslashes are escaped.
[[nodiscard]] std::string notificationScript(const std::string& title, const std::string& body);

/// The command that runs that script.
[[nodiscard]] Command notificationCommand(const std::string& title, const std::string& body);

}  // namespace notewick
