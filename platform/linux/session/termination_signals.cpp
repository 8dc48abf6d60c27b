#include "platform/linux/session/termination_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <array>
#include <csignal>

namespace notewick {
namespace {

constexpr std::array<int, 3> SIGNALS = {SIGTERM, SIGINT, SIGHUP};

int writeEnd = -1;

void wakeLoop(int) {
  const char byte = 0;
  [[maybe_unused]] const auto written = write(writeEnd, &byte, 1);
}

}  // namespace

TerminationSignals::TerminationSignals() {
  std::array<int, 2> ends;
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  readEnd_ = ends[0];
  writeEnd = ends[1];
  notifier_ = std::make_unique<QSocketNotifier>(readEnd_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, [] { QCoreApplication::exit(); });
  for (std::size_t each = 0; each < SIGNALS.size(); ++each) {
    before_[each] = std::signal(SIGNALS[each], wakeLoop);
    if (before_[each] == SIG_IGN) std::signal(SIGNALS[each], SIG_IGN);
  }
}

TerminationSignals::~TerminationSignals() {
  if (readEnd_ < 0) return;
  for (std::size_t each = 0; each < SIGNALS.size(); ++each) {
    std::signal(SIGNALS[each], before_[each]);
  }
  close(readEnd_);
  close(writeEnd);
}

}  // namespace notewick
