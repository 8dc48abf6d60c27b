#pragma once

#include <string>
#include <vector>

namespace notewick {

/// Starts other programs. Main thread.
class ProcessLauncher {
 public:
  virtual ~ProcessLauncher() = default;

  /// Starts `executable` with `arguments` and returns without waiting for it or reading its output.
  /// A failed launch is ignored.
  virtual void launch(const std::string& executable, const std::vector<std::string>& arguments) = 0;
};

}  // namespace notewick
