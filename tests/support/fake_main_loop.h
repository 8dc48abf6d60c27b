#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <random>
#include <vector>

#include "platform/main_loop.h"
#include "tests/support/fake_clock.h"
#include "tests/support/trace.h"

namespace notewick {

/// A main loop that turns only when a test says so, over the logical time of `FakeClock`. The start
/// of a repeating timer stands in the trace: "every 15 s".
class FakeMainLoop : public MainLoop {
 public:
  FakeMainLoop(FakeClock& clock, Trace& trace) : clock_(clock), trace_(trace) {}

  /// From now on timers fire late, each time by another random part of `most` seconds, as real ones
  /// do. The random numbers are the same in every run.
  void fireLate(double most) { lateness_ = std::uniform_real_distribution(0.0, most); }

  void post(std::function<void()> action) override { posted_.push_back(std::move(action)); }
  [[nodiscard]] std::unique_ptr<Timer> startOneShot(double seconds,
                                                    std::function<void()> action) override;
  [[nodiscard]] std::unique_ptr<Timer> startRepeating(double seconds,
                                                      std::function<void()> action) override;

  /// Runs what was posted, and what that posts in turn.
  void runPosted();

  /// Moves the time forward, running every timer that falls due, earliest first, and after each
  /// what was posted. Where timers fire late the time may end up later than asked for by as much.
  void advance(double seconds);

  /// The machine sleeps, and its timers count the time: on waking each overdue timer fires once and
  /// goes on in its phase.
  void sleepMachine(double seconds);

  /// The seconds of the timers that are running, in the order in which they were started.
  [[nodiscard]] std::vector<double> runningTimers() const;

  /// What was posted never runs, as when a process ends.
  void dropPosted() { posted_.clear(); }

 private:
  struct Schedule {
    double seconds;
    bool repeating;
    Date due;  ///< by the uptime
    std::function<void()> action;
    bool cancelled = false;
  };
  class Handle;

  std::unique_ptr<Timer> start(double seconds, bool repeating, std::function<void()> action);
  [[nodiscard]] std::shared_ptr<Schedule> nextDue(Date limit);
  void fire(Schedule& schedule);

  FakeClock& clock_;
  std::mt19937 random_;
  std::uniform_real_distribution<double> lateness_{0.0, 0.0};
  Trace& trace_;
  std::deque<std::function<void()>> posted_;
  std::vector<std::shared_ptr<Schedule>> schedules_;
};

}  // namespace notewick
