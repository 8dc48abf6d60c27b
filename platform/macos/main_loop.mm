#include "platform/macos/main_loop.h"

#import <Foundation/Foundation.h>

#include <utility>

namespace notewick {
namespace {

class RunLoopTimer final : public Timer {
 public:
  explicit RunLoopTimer(NSTimer* timer) : timer_(timer) {
    [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
  }
  ~RunLoopTimer() override { [timer_ invalidate]; }

 private:
  NSTimer* timer_;
};

std::unique_ptr<Timer> startTimer(double seconds, bool repeats, std::function<void()> action) {
  return std::make_unique<RunLoopTimer>([NSTimer timerWithTimeInterval:seconds
                                                               repeats:repeats
                                                                 block:^(NSTimer*) {
                                                                   @autoreleasepool {
                                                                     // The action may destroy its
                                                                     // own timer, and with it this
                                                                     // block.
                                                                     const auto running = action;
                                                                     running();
                                                                   }
                                                                 }]);
}

}  // namespace

void CocoaMainLoop::post(std::function<void()> action) {
  dispatch_async(dispatch_get_main_queue(), ^{
    @autoreleasepool {
      action();
    }
  });
}

std::unique_ptr<Timer> CocoaMainLoop::startOneShot(double seconds, std::function<void()> action) {
  return startTimer(seconds, false, std::move(action));
}

std::unique_ptr<Timer> CocoaMainLoop::startRepeating(double seconds, std::function<void()> action) {
  return startTimer(seconds, true, std::move(action));
}

}  // namespace notewick
