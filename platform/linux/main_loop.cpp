#include "platform/linux/main_loop.h"

#include <QBasicTimer>
#include <QTimerEvent>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <utility>

namespace notewick {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

/// A repeating timer that is late by more than this leaves out the firings it has missed.
constexpr auto LONGEST_LATENESS = 1s;

Milliseconds milliseconds(double seconds) {
  constexpr double LONGEST = std::numeric_limits<int>::max();
  return Milliseconds(static_cast<int>(std::clamp(std::round(seconds * 1000), 0.0, LONGEST)));
}

class QtTimer : public Timer, private QObject {
 protected:
  explicit QtTimer(std::function<void()> action)
      : action_(std::make_shared<std::function<void()>>(std::move(action))) {}

  void fireIn(Milliseconds time) {
    timer_.start(static_cast<int>(time.count()), Qt::PreciseTimer, this);
  }
  void stop() { timer_.stop(); }

 private:
  /// Called when the timer fires, before its action, which may destroy the timer.
  virtual void prepareNext() = 0;

  void timerEvent(QTimerEvent* event) override {
    if (event->timerId() != timer_.timerId()) return;
    prepareNext();
    const auto outlivingTheTimer = action_;
    (*outlivingTheTimer)();
  }

  std::shared_ptr<std::function<void()>> action_;
  QBasicTimer timer_;
};

class OneShotTimer final : public QtTimer {
 public:
  OneShotTimer(double seconds, std::function<void()> action) : QtTimer(std::move(action)) {
    fireIn(milliseconds(seconds));
  }

 private:
  void prepareNext() override { stop(); }
};

/// Keeps its phase by itself: Qt's own repeating timers begin a new phase when they are late by
/// more than their interval.
class RepeatingTimer final : public QtTimer {
 public:
  RepeatingTimer(double seconds, std::function<void()> action)
      : QtTimer(std::move(action)),
        interval_(std::max(milliseconds(seconds), Milliseconds(1))),
        due_(Clock::now() + interval_) {
    fireIn(interval_);
  }

 private:
  void prepareNext() override {
    const auto now = Clock::now();
    due_ += interval_;
    if (now - due_ > LONGEST_LATENESS) due_ += interval_ * ((now - due_) / interval_ + 1);
    fireIn(std::max(std::chrono::ceil<Milliseconds>(due_ - now), Milliseconds(0)));
  }

  Milliseconds interval_;
  Clock::time_point due_;
};

}  // namespace

void QtMainLoop::post(std::function<void()> action) {
  QMetaObject::invokeMethod(&mainThread_, std::move(action), Qt::QueuedConnection);
}

std::unique_ptr<Timer> QtMainLoop::startOneShot(double seconds, std::function<void()> action) {
  return std::make_unique<OneShotTimer>(seconds, std::move(action));
}

std::unique_ptr<Timer> QtMainLoop::startRepeating(double seconds, std::function<void()> action) {
  return std::make_unique<RepeatingTimer>(seconds, std::move(action));
}

}  // namespace notewick
