#pragma once

#include <QSocketNotifier>
#include <memory>

namespace notewick {

/// Ends Qt's event loop, without closing windows first, when the process is asked to end
/// (SIGTERM, SIGINT, SIGHUP). A signal that the process was started to ignore, as by nohup, stays
/// ignored. One at a time.
class TerminationSignals {
 public:
  TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;
  ~TerminationSignals();

 private:
  int readEnd_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace notewick
