#pragma once

#include "../base.h"

typedef const CF_BRIDGED(id) void* CFTypeRef;
typedef const struct CF_BRIDGED(NSString) __CFString* CFStringRef;
typedef const struct CF_BRIDGED(NSData) __CFData* CFDataRef;
typedef const struct CF_BRIDGED(NSArray) __CFArray* CFArrayRef;
typedef const struct CF_BRIDGED(NSDictionary) __CFDictionary* CFDictionaryRef;
typedef const struct CF_BRIDGED(id) __CFAllocator* CFAllocatorRef;
typedef struct CF_BRIDGED(id) __CFMessagePort* CFMessagePortRef;
typedef struct CF_BRIDGED(id) __CFRunLoop* CFRunLoopRef;
typedef struct CF_BRIDGED(id) __CFRunLoopSource* CFRunLoopSourceRef;
typedef CFStringRef CFRunLoopMode;
typedef unsigned long CFTypeID;
typedef long CFIndex;
typedef double CFTimeInterval;

extern "C" {
#pragma clang assume_nonnull begin

CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);
CFTypeID CFArrayGetTypeID(void);
CFTypeID CFBooleanGetTypeID(void);
CFTypeID CFDataGetTypeID(void);
CFTypeID CFStringGetTypeID(void);

extern const CFRunLoopMode kCFRunLoopCommonModes;
CFRunLoopRef CFRunLoopGetMain(void);
void CFRunLoopAddSource(CFRunLoopRef loop, CFRunLoopSourceRef source, CFRunLoopMode mode);

typedef struct {
  CFIndex version;
  void* _Nullable info;
  const void* _Nullable (*_Nullable retain)(const void* _Nullable info);
  void (*_Nullable release)(const void* _Nullable info);
  CFStringRef _Nullable (*_Nullable copyDescription)(const void* _Nullable info);
} CFMessagePortContext;
typedef CFDataRef _Nullable (*CFMessagePortCallBack)(CFMessagePortRef _Nullable local,
                                                     SInt32 messageId, CFDataRef _Nullable data,
                                                     void* _Nullable info);
enum : SInt32 { kCFMessagePortSuccess = 0 };

CFMessagePortRef _Nullable CFMessagePortCreateLocal(
    CFAllocatorRef _Nullable allocator, CFStringRef _Nullable name,
    CFMessagePortCallBack _Nullable callout, const CFMessagePortContext* _Nullable context,
    Boolean* _Nullable shouldFreeInfo) CF_RETURNS_RETAINED;
CFMessagePortRef _Nullable CFMessagePortCreateRemote(CFAllocatorRef _Nullable allocator,
                                                     CFStringRef name) CF_RETURNS_RETAINED;
CFRunLoopSourceRef _Nullable CFMessagePortCreateRunLoopSource(CFAllocatorRef _Nullable allocator,
                                                              CFMessagePortRef _Nullable local,
                                                              CFIndex order) CF_RETURNS_RETAINED;
SInt32 CFMessagePortSendRequest(CFMessagePortRef remote, SInt32 messageId, CFDataRef data,
                                CFTimeInterval sendTimeout, CFTimeInterval receiveTimeout,
                                CFStringRef _Nullable replyMode,
                                CFDataRef _Nullable* _Nullable returnData);
void CFMessagePortInvalidate(CFMessagePortRef port);

#pragma clang assume_nonnull end
}
