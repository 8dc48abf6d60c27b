#include "platform/macos/process_launcher.h"

#include "platform/macos/text.h"

namespace notewick {

void TaskLauncher::launch(const Command& command) {
  NSTask* task = [[NSTask alloc] init];
  task.executableURL = [NSURL fileURLWithPath:nsString(command.executable)];
  NSMutableArray<NSString*>* texts = [NSMutableArray array];
  for (const std::string& argument : command.arguments) [texts addObject:nsString(argument)];
  task.arguments = texts;
  task.standardOutput = NSFileHandle.fileHandleWithNullDevice;
  task.standardError = NSFileHandle.fileHandleWithNullDevice;
  [task launchAndReturnError:nil];
}

}  // namespace notewick
