#pragma once

#import <Foundation/Foundation.h>

#include <functional>

namespace notewick {

/// Runs what is due on the main run loop now: for what must not happen.
inline void runLoopOnce() {
  [NSRunLoop.currentRunLoop runMode:NSDefaultRunLoopMode
                         beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.02]];
}

/// Runs the main run loop until `holds` does; false when it does not within 20 seconds.
[[nodiscard]] inline bool eventually(const std::function<bool()>& holds) {
  NSDate* end = [NSDate dateWithTimeIntervalSinceNow:20];
  while (!holds()) {
    if (end.timeIntervalSinceNow < 0) return false;
    runLoopOnce();
  }
  return true;
}

}  // namespace notewick
