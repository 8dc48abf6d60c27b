#include "outbox/delayed_save.h"

#include "platform/ports.h"

namespace notewick {

void DelayedSave::within(double seconds) {
  auto& timer = waiting_[seconds];
  if (!timer) timer = ports().mainLoop.startOneShot(seconds, [this] { now(); });
}

void DelayedSave::now() {
  waiting_.clear();
  save_();
}

void DelayedSave::finish() {
  if (!waiting_.empty()) now();
}

}  // namespace notewick
