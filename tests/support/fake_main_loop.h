#pragma once

#include <algorithm>
#include <cmath>
#include <deque>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
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
                                                    std::function<void()> action) override {
    return start({seconds, false, {}, std::move(action)});
  }
  [[nodiscard]] std::unique_ptr<Timer> startRepeating(double seconds,
                                                      std::function<void()> action) override {
    trace_.push_back("every " + std::to_string(std::lround(seconds)) + " s");
    return start({seconds, true, {}, std::move(action)});
  }

  /// Runs what was posted, and what that posts in turn.
  void runPosted() {
    while (!posted_.empty()) {
      const auto action = std::move(posted_.front());
      posted_.pop_front();
      action();
    }
  }

  /// Moves the time forward, running every timer that falls due, earliest first, and after each
  /// what was posted. Where timers fire late the time may end up later than asked for by as much.
  void advance(double seconds) {
    const Date end = clock_.uptime() + Date(seconds);
    runPosted();
    while (const auto schedule = nextDue(end)) {
      clock_.runTo(std::max(clock_.uptime(), schedule->due + Date(lateness_(random_))));
      fire(*schedule);
    }
    clock_.runTo(std::max(clock_.uptime(), end));
  }

  /// The machine sleeps, and its timers count the time: on waking each overdue timer fires once and
  /// goes on in its phase.
  void sleepMachine(double seconds) {
    clock_.runTo(clock_.uptime() + Date(seconds));
    while (const auto schedule = nextDue(clock_.uptime())) {
      const double missed = std::floor((clock_.uptime() - schedule->due) / Date(schedule->seconds));
      schedule->due += missed * Date(schedule->seconds);
      fire(*schedule);
    }
  }

  /// The seconds of the timers that are running, in the order in which they were started.
  [[nodiscard]] std::vector<double> runningTimers() const {
    std::vector<double> seconds;
    for (const auto& schedule : schedules_)
      if (!schedule->cancelled) seconds.push_back(schedule->seconds);
    return seconds;
  }

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
  struct Handle : Timer {
    explicit Handle(std::shared_ptr<Schedule> started) : schedule(std::move(started)) {}
    ~Handle() override { schedule->cancelled = true; }
    std::shared_ptr<Schedule> schedule;
  };

  std::unique_ptr<Timer> start(Schedule schedule) {
    schedule.due = clock_.uptime() + Date(schedule.seconds);
    schedules_.push_back(std::make_shared<Schedule>(std::move(schedule)));
    return std::make_unique<Handle>(schedules_.back());
  }

  [[nodiscard]] std::shared_ptr<Schedule> nextDue(Date limit) {
    std::erase_if(schedules_, [](const auto& schedule) { return schedule->cancelled; });
    const auto next =
        std::ranges::min_element(schedules_, {}, [](const auto& s) { return s->due; });
    return next == schedules_.end() || (*next)->due > limit ? nullptr : *next;
  }

  void fire(Schedule& schedule) {
    const auto action = schedule.action;
    schedule.due += Date(schedule.seconds);
    schedule.cancelled = !schedule.repeating;
    action();
    runPosted();
  }

  FakeClock& clock_;
  std::mt19937 random_;
  std::uniform_real_distribution<double> lateness_{0.0, 0.0};
  Trace& trace_;
  std::deque<std::function<void()>> posted_;
  std::vector<std::shared_ptr<Schedule>> schedules_;
};

}  // namespace notewick
