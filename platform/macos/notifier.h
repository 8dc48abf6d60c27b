#pragma once

#include "platform/notifier.h"
#include "platform/process_launcher.h"

namespace notewick {

/// Shows notifications by a script (detect/notification.h) that the system's interpreter runs, in a
/// process of its own. It does not tell of clicks.
class ScriptNotifier final : public Notifier {
 public:
  explicit ScriptNotifier(ProcessLauncher& launcher) : launcher_(launcher) {}

  void show(const std::string& title, const std::string& body,
            std::function<void()> clicked) override;

 private:
  ProcessLauncher& launcher_;
};

}  // namespace notewick
