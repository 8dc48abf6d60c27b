#include "platform/linux/main_loop.h"

#include <QBasicTimer>
#include <QTimerEvent>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace notewick {
namespace {

int milliseconds(double seconds) {
  constexpr double longest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(std::round(seconds * 1000), 0.0, longest));
}

enum class Firing { once, repeatedly };

class QtTimer : public Timer, private QObject {
 public:
  QtTimer(Firing firing, double seconds, std::function<void()> action)
      : firing_(firing), action_(std::make_shared<std::function<void()>>(std::move(action))) {
    timer_.start(milliseconds(seconds), Qt::PreciseTimer, this);
  }

 private:
  void timerEvent(QTimerEvent* event) override {
    if (event->timerId() != timer_.timerId()) return;
    if (firing_ == Firing::once) timer_.stop();
    // The action may destroy this timer, and must outlive its own call.
    const auto action = action_;
    (*action)();
  }

  Firing firing_;
  std::shared_ptr<std::function<void()>> action_;
  QBasicTimer timer_;
};

}  // namespace

void QtMainLoop::post(std::function<void()> action) {
  QMetaObject::invokeMethod(&mainThread_, std::move(action), Qt::QueuedConnection);
}

std::unique_ptr<Timer> QtMainLoop::startOneShot(double seconds, std::function<void()> action) {
  return std::make_unique<QtTimer>(Firing::once, seconds, std::move(action));
}

std::unique_ptr<Timer> QtMainLoop::startRepeating(double seconds, std::function<void()> action) {
  return std::make_unique<QtTimer>(Firing::repeatedly, seconds, std::move(action));
}

}  // namespace notewick
