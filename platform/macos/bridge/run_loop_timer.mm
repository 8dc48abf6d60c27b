#include "platform/macos/bridge/run_loop_timer.h"

#import <Foundation/Foundation.h>

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

}  // namespace

std::unique_ptr<Timer> startRunLoopTimer(double seconds, bool repeats,
                                         std::function<void()> action) {
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

}  // namespace notewick
