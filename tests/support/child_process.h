#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace notewick {

/// Another program, started for a test. It ends with this object, and with the test program however
/// that ends.
class ChildProcess {
 public:
  /// Starts `command` with `input` on its standard input.
  explicit ChildProcess(const std::vector<std::string>& command, const std::string& input = "");
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();

  /// The next line of its standard output; waits for it. Empty when there is none.
  [[nodiscard]] std::string readLine() const;

  void signal(int number) const;

  /// Waits for its end and gives its exit status; negative where a signal ended it.
  int wait();

 private:
  pid_t id_;
  int output_;
};

}  // namespace notewick
