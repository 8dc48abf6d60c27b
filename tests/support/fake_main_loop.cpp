#include "tests/support/fake_main_loop.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace notewick {

class FakeMainLoop::Handle : public Timer {
 public:
  explicit Handle(std::shared_ptr<Schedule> schedule) : schedule_(std::move(schedule)) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() override { schedule_->cancelled = true; }

 private:
  std::shared_ptr<Schedule> schedule_;
};

std::unique_ptr<Timer> FakeMainLoop::startOneShot(double seconds, std::function<void()> action) {
  return start(seconds, false, std::move(action));
}

std::unique_ptr<Timer> FakeMainLoop::startRepeating(double seconds, std::function<void()> action) {
  trace_.push_back("every " + std::to_string(std::lround(seconds)) + " s");
  return start(seconds, true, std::move(action));
}

std::unique_ptr<Timer> FakeMainLoop::start(double seconds, bool repeating,
                                           std::function<void()> action) {
  schedules_.push_back(std::make_shared<Schedule>(
      Schedule{seconds, repeating, clock_.uptime() + Date(seconds), std::move(action)}));
  return std::make_unique<Handle>(schedules_.back());
}

void FakeMainLoop::runPosted() {
  while (!posted_.empty()) {
    const auto action = std::move(posted_.front());
    posted_.pop_front();
    action();
  }
}

void FakeMainLoop::advance(double seconds) {
  const Date end = clock_.uptime() + Date(seconds);
  runPosted();
  while (const auto schedule = nextDue(end)) {
    clock_.runTo(std::max(clock_.uptime(), schedule->due + Date(lateness_(random_))));
    fire(*schedule);
    runPosted();
  }
  clock_.runTo(std::max(clock_.uptime(), end));
}

void FakeMainLoop::sleepMachine(double seconds) {
  clock_.runTo(clock_.uptime() + Date(seconds));
  while (const auto schedule = nextDue(clock_.uptime())) {
    const double missed = std::floor((clock_.uptime() - schedule->due) / Date(schedule->seconds));
    schedule->due += missed * Date(schedule->seconds);
    fire(*schedule);
    runPosted();
  }
}

std::vector<double> FakeMainLoop::runningTimers() const {
  std::vector<double> seconds;
  for (const auto& schedule : schedules_)
    if (!schedule->cancelled) seconds.push_back(schedule->seconds);
  return seconds;
}

std::shared_ptr<FakeMainLoop::Schedule> FakeMainLoop::nextDue(Date limit) {
  std::erase_if(schedules_, [](const auto& schedule) { return schedule->cancelled; });
  const auto next = std::ranges::min_element(schedules_, {}, [](const auto& s) { return s->due; });
  return next == schedules_.end() || (*next)->due > limit ? nullptr : *next;
}

void FakeMainLoop::fire(Schedule& schedule) {
  const auto action = schedule.action;
  schedule.due += Date(schedule.seconds);
  schedule.cancelled = !schedule.repeating;
  action();
}

}  // namespace notewick
