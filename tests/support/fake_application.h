#pragma once

#include <functional>
#include <memory>

#include "platform/application.h"

namespace notewick {

/// The application object of a test: `run` launches the delegate and returns at once, and the test
/// turns the loop itself. It is what `sharedApplication` gives in a test program.
class FakeApplication : public Application {
 public:
  void becomeAccessory() override { accessory = true; }
  int run(std::weak_ptr<ApplicationDelegate> owner) override;

  /// The user starts the program a second time.
  void startAgain();

  /// The user quits, or logs out.
  void terminate();

  /// What the test does when the program asks for the application object.
  std::function<void()> onRequest = [] {};

  bool accessory = false;
  int runs = 0;

 private:
  std::weak_ptr<ApplicationDelegate> delegate_;
};

[[nodiscard]] FakeApplication& fakeApplication();

}  // namespace notewick
