#pragma once

#include <vector>

#include "platform/process_launcher.h"

namespace notewick {

/// Keeps what was launched, in order; launches nothing.
class FakeProcessLauncher : public ProcessLauncher {
 public:
  void launch(const Command& command) override { launches.push_back(command); }

  std::vector<Command> launches;
};

}  // namespace notewick
