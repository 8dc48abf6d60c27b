#pragma once

#include "platform/process_launcher.h"

namespace notewick {

/// Starts programs as tasks whose output goes nowhere.
class TaskLauncher final : public ProcessLauncher {
 public:
  void launch(const Command& command) override;
};

}  // namespace notewick
