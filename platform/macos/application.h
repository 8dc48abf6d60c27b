#pragma once

#import <AppKit/AppKit.h>

#include "platform/application.h"
#include "platform/macos/session/single_instance.h"
#include "platform/macos/session/termination_signals.h"

namespace notewick {

/// The shared application object. Its main menu is never shown, for the program is an accessory,
/// but it is what makes the editing shortcuts work in the panels' fields.
class CocoaApplication final : public Application {
 public:
  void becomeAccessory() override;
  /// Returns only when another instance runs: the system ends a terminating program by itself, at a
  /// place of its own, without coming back here.
  int run(std::weak_ptr<ApplicationDelegate> delegate) override;

 private:
  NSObject<NSApplicationDelegate>* events_;
  /// Keeps the system from slowing the timers of a program without windows.
  id<NSObject> activity_;
  std::unique_ptr<SingleInstance> instance_;
  std::unique_ptr<TerminationSignals> signals_;
};

/// The editing commands and closing a window, in a menu for the menu bar.
[[nodiscard]] NSMenu* editingMenu();

}  // namespace notewick
