#include "platform/macos/panels/borrowed_keyboard.h"

#include <utility>

namespace notewick {

void BorrowedKeyboard::remember() {
  NSRunningApplication* front = NSWorkspace.sharedWorkspace.frontmostApplication;
  if (![front isEqual:NSRunningApplication.currentApplication]) owner_ = front;
}

// Later systems prefer calls that the first supported one does not have.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"

void BorrowedKeyboard::take() {
  remember();
  [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
}

#pragma clang diagnostic pop

void BorrowedKeyboard::giveBack() {
  NSRunningApplication* owner = std::exchange(owner_, nil);
  NSApplication* application = NSApplication.sharedApplication;
  if (owner == nil || !application.active) return;
  if (@available(macOS 14, *)) [application yieldActivationToApplication:owner];
  [owner activateWithOptions:0];
}

}  // namespace notewick
