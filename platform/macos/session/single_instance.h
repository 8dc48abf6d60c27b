#pragma once

#import <CoreFoundation/CoreFoundation.h>

#include <functional>
#include <memory>

#include "platform/macos/bridge/cf_owner.h"

namespace notewick {

/// The right to be the one running instance for this user, held as a named message port: the system
/// gives a name to one process of a login session and takes it back when that process ends. Opening
/// the bundle twice never gets this far; starting its executable by hand does.
class SingleInstance {
 public:
  /// Null when another instance runs; it has been told then. `startedAgain` runs on the main thread
  /// whenever an instance started later finds this one.
  [[nodiscard]] static std::unique_ptr<SingleInstance> claim(std::function<void()> startedAgain);

  explicit SingleInstance(std::function<void()> startedAgain);
  SingleInstance(const SingleInstance&) = delete;
  ~SingleInstance();

 private:
  std::function<void()> startedAgain_;
  CFOwner<CFMessagePortRef> port_;
};

}  // namespace notewick
