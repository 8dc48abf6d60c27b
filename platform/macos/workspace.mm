#include "platform/macos/workspace.h"

#import <AppKit/AppKit.h>

#include "platform/macos/bridge/text.h"

namespace notewick {

void CocoaWorkspace::openUrl(const std::string& url) {
  NSURL* parsed = [NSURL URLWithString:nsString(url)];
  if (parsed != nil) [NSWorkspace.sharedWorkspace openURL:parsed];
}

void CocoaWorkspace::beep() { NSBeep(); }

std::string CocoaWorkspace::bundlePath() const { return utf8(NSBundle.mainBundle.bundlePath); }

std::string CocoaWorkspace::configurationFolder() const {
  return utf8([NSHomeDirectory() stringByAppendingPathComponent:@"Library/Preferences"]);
}

}  // namespace notewick
