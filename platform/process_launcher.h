#pragma once

#include <string>
#include <vector>

namespace notewick {

/// A program and what it is given, each argument as it stands.
struct Command {
  std::string executable;  ///< a full path
  std::vector<std::string> arguments;

  friend bool operator==(const Command&, const Command&) = default;
};

/// Starts other programs. Main thread.
class ProcessLauncher {
 public:
  virtual ~ProcessLauncher() = default;

  /// Starts the program and returns without waiting for it or reading its output. A failed launch
  /// is ignored.
  virtual void launch(const Command& command) = 0;
};

}  // namespace notewick
