#include "tests/macos/eventually.h"

#import <Foundation/Foundation.h>

namespace notewick {
namespace {

constexpr NSTimeInterval PATIENCE_SECONDS = 20;
constexpr NSTimeInterval TURN_SECONDS = 0.02;

}  // namespace

bool eventually(const std::function<bool()>& holds) {
  NSDate* end = [NSDate dateWithTimeIntervalSinceNow:PATIENCE_SECONDS];
  while (!holds()) {
    if (end.timeIntervalSinceNow < 0) return false;
    runLoopOnce();
  }
  return true;
}

void runLoopOnce() {
  [NSRunLoop.currentRunLoop runMode:NSDefaultRunLoopMode
                         beforeDate:[NSDate dateWithTimeIntervalSinceNow:TURN_SECONDS]];
}

}  // namespace notewick
