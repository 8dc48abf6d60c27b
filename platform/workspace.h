#pragma once

#include <string>

namespace notewick {

/// How a program asks to be started when the user logs in.
enum class LoginItemForm {
  launchAgent,     ///< a property list for the launch service, in ~/Library/LaunchAgents
  autostartEntry,  ///< a desktop entry in the freedesktop autostart folder
};

/// The desktop around the program. Main thread; failures are swallowed.
class Workspace {
 public:
  virtual ~Workspace() = default;

  /// Opens a link in whatever the user has chosen for it.
  virtual void openUrl(const std::string& url) = 0;

  /// The system's alert sound.
  virtual void beep() = 0;

  /// What a login item has to start: the full path of the application bundle, or of the executable
  /// where there are no bundles.
  [[nodiscard]] virtual std::string bundlePath() const = 0;

  [[nodiscard]] virtual LoginItemForm loginItemForm() const = 0;

  /// The user's folder for configuration files, where autostart entries live
  /// (freedesktop.org, XDG Base Directories); unused with launch agents.
  [[nodiscard]] virtual std::string configurationFolder() const = 0;
};

}  // namespace notewick
