#pragma once

#include <string>
#include <vector>

#include "platform/process_launcher.h"

namespace notewick {

/// Keeps what was launched, in order; launches nothing.
class FakeProcessLauncher : public ProcessLauncher {
 public:
  struct Launch {
    std::string executable;
    std::vector<std::string> arguments;
    bool operator==(const Launch&) const = default;
  };

  void launch(const std::string& executable, const std::vector<std::string>& arguments) override {
    launches.push_back({executable, arguments});
  }

  std::vector<Launch> launches;
};

}  // namespace notewick
