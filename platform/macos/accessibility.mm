#include "platform/macos/accessibility.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

namespace notewick {

bool AccessibilityTrust::isTrusted() { return AXIsProcessTrusted(); }

bool AccessibilityTrust::isTrustedWithPrompt() {
  NSDictionary* options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @YES};
  return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
}

}  // namespace notewick
