#pragma once

#include <string>

#include "platform/workspace.h"

namespace notewick {

/// The launch agent that starts the executable inside the bundle at login
/// (Apple: Daemons and Services Programming Guide, "Creating Launch Daemons and Agents").
[[nodiscard]] std::string launchAgentText(const std::string& bundlePath);

/// The desktop entry that starts the executable at login
/// (freedesktop.org, Desktop Application Autostart).
[[nodiscard]] std::string autostartEntryText(const std::string& executablePath);

/// The file that makes the desktop start the program at login.
struct LoginItemFile {
  std::string folder;
  std::string name;
  std::string text;
  bool makesFolder;  ///< whether a missing folder is created; the autostart folder is ours to make
};
[[nodiscard]] LoginItemFile loginItemFile(const Workspace& workspace,
                                          const std::string& homeFolder);

}  // namespace notewick
