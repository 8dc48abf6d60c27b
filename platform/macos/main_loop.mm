#include "platform/macos/main_loop.h"

#import <Foundation/Foundation.h>

#include <utility>

#include "platform/macos/bridge/run_loop_timer.h"

namespace notewick {

void CocoaMainLoop::post(std::function<void()> action) {
  dispatch_async(dispatch_get_main_queue(), ^{
    @autoreleasepool {
      action();
    }
  });
}

std::unique_ptr<Timer> CocoaMainLoop::startOneShot(double seconds, std::function<void()> action) {
  return startRunLoopTimer(seconds, false, std::move(action));
}

std::unique_ptr<Timer> CocoaMainLoop::startRepeating(double seconds, std::function<void()> action) {
  return startRunLoopTimer(seconds, true, std::move(action));
}

}  // namespace notewick
