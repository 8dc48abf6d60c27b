#include "platform/macos/process_launcher.h"

#include "platform/macos/bridge/text.h"

namespace notewick {

void TaskLauncher::launch(const Command& command) {
  NSTask* task = [[NSTask alloc] init];
  task.executableURL = [NSURL fileURLWithPath:nsString(command.executable)];
  task.arguments = nsStrings(command.arguments);
  task.standardOutput = NSFileHandle.fileHandleWithNullDevice;
  task.standardError = NSFileHandle.fileHandleWithNullDevice;
  [task launchAndReturnError:nil];
}

}  // namespace notewick
