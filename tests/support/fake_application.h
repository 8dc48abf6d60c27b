#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/application.h"

namespace notewick {

/// The application object of a test: `run` launches the delegate and returns at once, and the test
/// turns the loop itself. It is what `sharedApplication` gives in a test program.
class FakeApplication : public Application {
 public:
  void becomeAccessory() override { accessory = true; }
  int run(std::weak_ptr<ApplicationDelegate> owner) override {
    ++runs;
    delegate_ = std::move(owner);
    tell(&ApplicationDelegate::applicationDidFinishLaunching);
    return 0;
  }

  /// The user starts the program a second time.
  void startAgain() { tell(&ApplicationDelegate::applicationReopened); }

  /// The user quits, or logs out.
  void terminate() { tell(&ApplicationDelegate::applicationWillTerminate); }

  /// What the test does when the program asks for the application object.
  std::function<void()> onRequest = [] {};

  bool accessory = false;
  int runs = 0;

 private:
  void tell(void (ApplicationDelegate::*event)()) {
    if (const auto receiver = delegate_.lock()) ((*receiver).*event)();
  }

  std::weak_ptr<ApplicationDelegate> delegate_;
};

[[nodiscard]] FakeApplication& fakeApplication();

}  // namespace notewick
