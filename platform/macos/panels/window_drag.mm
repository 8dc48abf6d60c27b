#include "platform/macos/panels/window_drag.h"

#include <utility>

#include "platform/macos/bridge/run_loop_timer.h"

namespace notewick {
namespace {

constexpr double LOOK_SECONDS = 0.05;

}  // namespace

WindowDrag::WindowDrag(NSWindow* window, MouseState mouseIsPressed)
    : mouseIsPressed_(std::move(mouseIsPressed)) {
  const auto begun = begun_;
  observation_ = [NSNotificationCenter.defaultCenter addObserverForName:NSWindowWillMoveNotification
                                                                 object:window
                                                                  queue:nil
                                                             usingBlock:^(NSNotification*) {
                                                               *begun = true;
                                                             }];
}

WindowDrag::~WindowDrag() { [NSNotificationCenter.defaultCenter removeObserver:observation_]; }

void WindowDrag::whenOver(std::function<void()> action) {
  waiting_.push_back(std::move(action));
  runWhatWaits();
}

bool WindowDrag::anyMouseButtonIsPressed() { return NSEvent.pressedMouseButtons != 0; }

bool WindowDrag::isOver() {
  if (!mouseIsPressed_()) *begun_ = false;
  return !*begun_;
}

void WindowDrag::runWhatWaits() {
  if (!isOver()) {
    nextLook_ = startRunLoopTimer(LOOK_SECONDS, false, [this] { runWhatWaits(); });
    return;
  }
  nextLook_.reset();
  for (const auto& action : std::exchange(waiting_, {})) action();
}

}  // namespace notewick
