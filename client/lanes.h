#pragma once

#include <deque>
#include <functional>
#include <memory>

#include "platform/main_loop.h"

namespace notewick {

/// Lets only so many calls be under way at once. The others wait for their turn, in order, without
/// limit of time. Main thread.
class Lanes {
 public:
  /// The loop must outlive the lanes.
  Lanes(MainLoop& loop, int count) : loop_(loop), free_(count) {}

  /// Runs `call`: inside this call where a lane is free, else in a later turn. The call keeps its
  /// lane until `leave`. Calls that still wait when the lanes are destroyed never run. A call may
  /// destroy the lanes.
  void enter(std::function<void()> call);

  /// A call has ended. Its lane is free from the next turn of the loop on, so that calls which end
  /// at once do not all run in one turn.
  void leave();

  /// Runs the waiting calls, one a turn, without waiting for a free lane: for calls that have
  /// nothing left to do. They leave like all others.
  void hurry();

 private:
  using Calls = std::deque<std::function<void()>>;

  void soon(std::function<void()> step);
  void runNext(Calls& calls);
  void runHurried();

  MainLoop& loop_;
  int free_;  ///< below zero while calls run that did not wait for a lane
  Calls waiting_;
  Calls hurried_;  ///< taken out of `waiting_`
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace notewick
