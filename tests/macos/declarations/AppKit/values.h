#pragma once

// What the classes of AppKit name: types, choices and numbers.

#include "../Foundation/Foundation.h"

#pragma clang assume_nonnull begin

typedef NSString* NSAccessibilityNotificationName;
typedef NSString* NSAccessibilityNotificationUserInfoKey;
typedef NSUInteger NSApplicationActivationOptions;
typedef NSInteger NSWindowLevel;
typedef NSString* NSWindowFrameAutosaveName;
static const NSWindowLevel NSFloatingWindowLevel = 3;
static const CGFloat NSVariableStatusItemLength = -1;

typedef NS_ENUM(NSInteger, NSAccessibilityPriorityLevel) { NSAccessibilityPriorityHigh = 90 };
typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
  NSApplicationActivationPolicyAccessory = 1
};
typedef NS_ENUM(NSUInteger, NSBackingStoreType) { NSBackingStoreBuffered = 2 };
typedef NS_ENUM(NSUInteger, NSBezelStyle) { NSBezelStylePush = 1 };
typedef NS_ENUM(NSUInteger, NSBorderType) { NSBezelBorder = 2 };
typedef NS_ENUM(NSUInteger, NSCellImagePosition) { NSImageLeading = 7 };
typedef NS_ENUM(NSUInteger, NSControlSize) { NSControlSizeSmall = 1 };
typedef NS_ENUM(NSUInteger, NSEventType) { NSEventTypeLeftMouseUp = 2, NSEventTypeKeyDown = 10 };
typedef NS_ENUM(NSInteger, NSLayoutAttribute) { NSLayoutAttributeLeading = 5 };
typedef NS_ENUM(NSUInteger, NSLineBreakMode) { NSLineBreakByTruncatingTail = 4 };
typedef NS_ENUM(NSUInteger, NSProgressIndicatorStyle) { NSProgressIndicatorStyleSpinning = 1 };
typedef NS_ENUM(NSUInteger, NSSegmentSwitchTracking) { NSSegmentSwitchTrackingSelectOne = 0 };
typedef NS_ENUM(NSInteger, NSUserInterfaceLayoutOrientation) {
  NSUserInterfaceLayoutOrientationHorizontal = 0,
  NSUserInterfaceLayoutOrientationVertical = 1
};
NS_OPTIONS(NSUInteger, NSAutoresizingMaskOptions){NSViewWidthSizable = 2};
NS_OPTIONS(NSUInteger, NSEventModifierFlags){
    NSEventModifierFlagShift = 1 << 17, NSEventModifierFlagControl = 1 << 18,
    NSEventModifierFlagOption = 1 << 19, NSEventModifierFlagCommand = 1 << 20};
NS_OPTIONS(NSUInteger, NSWindowCollectionBehavior){
    NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
    NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8};
NS_OPTIONS(NSUInteger, NSWindowStyleMask){
    NSWindowStyleMaskTitled = 1 << 0, NSWindowStyleMaskClosable = 1 << 1,
    NSWindowStyleMaskUtilityWindow = 1 << 4, NSWindowStyleMaskNonactivatingPanel = 1 << 7};

extern "C" void NSBeep(void);

#pragma clang assume_nonnull end
