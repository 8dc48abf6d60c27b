#pragma once

#import <Foundation/Foundation.h>

#include <functional>
#include <map>

namespace notewick {

/// Lets the program end in order when the process is asked to end (SIGTERM, SIGINT, SIGHUP): the
/// system would end it at once. A signal that the process was started to ignore stays ignored.
class TerminationSignals {
 public:
  /// `asked` runs on the main thread, in a later turn than the signal.
  explicit TerminationSignals(std::function<void()> asked);
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;
  ~TerminationSignals();

 private:
  using Handler = void (*)(int);

  std::map<int, Handler> before_;  ///< who handled each signal
  NSMutableArray<dispatch_source_t>* sources_ = [NSMutableArray array];
};

}  // namespace notewick
