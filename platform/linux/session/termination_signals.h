#pragma once

#include <QSocketNotifier>
#include <array>
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
  using Handler = void (*)(int);

  std::array<Handler, 3> before_{};  ///< who handled each signal
  int readEnd_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace notewick
