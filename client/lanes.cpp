#include "client/lanes.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace notewick {

void Lanes::enter(std::function<void()> call) {
  waiting_.push_back(std::move(call));
  if (free_ > 0 && waiting_.size() == 1) runNext(waiting_);
}

void Lanes::leave() {
  soon([this] {
    ++free_;
    if (free_ > 0) runNext(waiting_);
  });
}

void Lanes::hurry() {
  const bool isRunning = !hurried_.empty();
  std::ranges::move(waiting_, std::back_inserter(hurried_));
  waiting_.clear();
  if (!isRunning && !hurried_.empty()) runHurried();
}

// The call runs last: it may destroy the lanes.
void Lanes::runHurried() {
  soon([this] {
    if (hurried_.size() > 1) runHurried();
    runNext(hurried_);
  });
}

void Lanes::runNext(Calls& calls) {
  if (calls.empty()) return;
  --free_;
  const auto call = std::move(calls.front());
  calls.pop_front();
  call();
}

void Lanes::soon(std::function<void()> step) {
  loop_.post([step = std::move(step), alive = std::weak_ptr(alive_)] {
    if (alive.lock()) step();
  });
}

}  // namespace notewick
