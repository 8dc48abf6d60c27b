#pragma once

#include <string>

#include "platform/notifier.h"
#include "platform/process_launcher.h"

namespace notewick {

/// Posts a desktop notification. Main thread; failures are swallowed.
void notify(const std::string& title, const std::string& body);

/// The AppleScript that shows a notification with a sound; quotes and backslashes are escaped.
[[nodiscard]] std::string notificationScript(const std::string& title, const std::string& body);

/// Shows notifications by running a script with the system's "/usr/bin/osascript".
class ScriptNotifier : public Notifier {
 public:
  explicit ScriptNotifier(ProcessLauncher& launcher) : launcher_(launcher) {}
  void show(const std::string& title, const std::string& body) override;

 private:
  ProcessLauncher& launcher_;
};

}  // namespace notewick
