#pragma once

// Types and macros that all frameworks share.

#include <cstddef>
#include <cstdint>
#include <cstring>

#include <sys/types.h>

#if NOTEWICK_INTEL
typedef signed char BOOL;
#else
typedef bool BOOL;
#endif
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double CGFloat;
typedef unsigned char Boolean;
typedef int32_t SInt32;
typedef uint32_t UInt32;
typedef SInt32 OSStatus;

#define NS_ENUM(type, name) \
  enum name : type name;    \
  enum name : type
#define NS_OPTIONS(type, name) \
  typedef type name;           \
  enum : type

#define CF_BRIDGED(object) __attribute__((objc_bridge(object)))
#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))

@class NSArray<__covariant ObjectType>;
@class NSData;
@class NSDictionary<__covariant KeyType, __covariant ObjectType>;
@class NSObject;
@class NSString;
