#pragma once

#include "../CoreFoundation/CoreFoundation.h"

// Accessibility. These functions are not audited for implicit bridging.

typedef const struct CF_BRIDGED(id) __AXUIElement* AXUIElementRef;
typedef NS_ENUM(SInt32, AXError) { kAXErrorSuccess = 0, kAXErrorCannotComplete = -25204 };

extern "C" {
#pragma clang assume_nonnull begin

extern const CFStringRef kAXTrustedCheckOptionPrompt;
#define kAXFocusedWindowAttribute ((__bridge CFStringRef) @"AXFocusedWindow")
#define kAXTitleAttribute ((__bridge CFStringRef) @"AXTitle")
#define kAXWindowsAttribute ((__bridge CFStringRef) @"AXWindows")

Boolean AXIsProcessTrusted(void);
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef _Nullable options);
CFTypeID AXUIElementGetTypeID(void);
AXUIElementRef AXUIElementCreateApplication(pid_t process) CF_RETURNS_RETAINED;
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                      CFTypeRef _Nullable* _Nonnull value);
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds);

#pragma clang assume_nonnull end
}
