#include "platform/macos/session/termination_signals.h"

#include <csignal>

namespace notewick {
namespace {

/// Takes the place of the system's answer, and other than SIG_IGN is not passed on to what the
/// program starts.
void leaveToTheSource(int) {}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> asked) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    before_[signal] = std::signal(signal, leaveToTheSource);
    if (before_[signal] == SIG_IGN) {
      (void)std::signal(signal, SIG_IGN);
      continue;
    }
    dispatch_source_t source = dispatch_source_create(
        DISPATCH_SOURCE_TYPE_SIGNAL, static_cast<uintptr_t>(signal), 0, dispatch_get_main_queue());
    dispatch_source_set_event_handler(source, ^{
      asked();
    });
    dispatch_activate(source);
    [sources_ addObject:source];
  }
}

TerminationSignals::~TerminationSignals() {
  for (dispatch_source_t source in sources_) dispatch_source_cancel(source);
  for (const auto& [signal, handler] : before_) (void)std::signal(signal, handler);
}

}  // namespace notewick
