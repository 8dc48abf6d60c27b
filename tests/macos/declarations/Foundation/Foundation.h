#pragma once

#include "../CoreFoundation/CoreFoundation.h"

#pragma clang assume_nonnull begin

@class NSDate, NSError, NSOperationQueue, NSURL;

typedef double NSTimeInterval;
typedef NSUInteger NSStringEncoding;
typedef NSString* NSCalendarIdentifier;
typedef NSString* NSErrorDomain;
typedef NSString* NSErrorUserInfoKey;
typedef NSString* NSNotificationName;
typedef NSString* NSRunLoopMode;
typedef unsigned short unichar;

// --- The root class, copying, enumerating --------------------------------------------------------
@protocol NSObject
- (BOOL)isEqual:(id _Nullable)object;
- (BOOL)isKindOfClass:(Class)kind;
@end

@protocol NSCopying
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (instancetype)alloc;
+ (Class)class;
- (instancetype)init;
- (id)copy;
- (id)mutableCopy;
@end

typedef struct {
  unsigned long state;
  id __unsafe_unretained _Nullable* _Nullable itemsPtr;
  unsigned long* _Nullable mutationsPtr;
  unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)length;
@end

// --- Values --------------------------------------------------------------------------------------
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };

@interface NSString : NSObject <NSCopying>
@property(readonly) NSUInteger length;
+ (instancetype)stringWithCharacters:(const unichar*)characters length:(NSUInteger)length;
- (nullable instancetype)initWithBytes:(const void*)bytes
                                length:(NSUInteger)length
                              encoding:(NSStringEncoding)encoding;
- (nullable instancetype)initWithData:(NSData*)data encoding:(NSStringEncoding)encoding;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)encoding allowLossyConversion:(BOOL)lossy;
- (NSString*)stringByAppendingString:(NSString*)string;
- (NSString*)stringByAppendingPathComponent:(NSString*)component;
@end

@interface NSData : NSObject <NSCopying>
@property(readonly) NSUInteger length;
@property(readonly) const void* bytes;
+ (instancetype)data;
+ (instancetype)dataWithBytes:(nullable const void*)bytes length:(NSUInteger)length;
@end

@interface NSValue : NSObject <NSCopying>
@end

@interface NSNumber : NSValue
@property(readonly) BOOL boolValue;
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithInteger:(NSInteger)value;
@end

@interface NSArray<__covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
@property(readonly) NSUInteger count;
+ (instancetype)array;
+ (instancetype)arrayWithObjects:(const ObjectType _Nonnull[_Nonnull])objects
                           count:(NSUInteger)count;
- (BOOL)containsObject:(ObjectType)object;
- (ObjectType)objectAtIndexedSubscript:(NSUInteger)index;
@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
- (void)addObject:(ObjectType)object;
- (void)removeAllObjects;
@end

@interface NSDictionary<__covariant KeyType, __covariant ObjectType>
    : NSObject <NSCopying, NSFastEnumeration>
@property(readonly) NSUInteger count;
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)count;
+ (nullable NSDictionary<NSString*, ObjectType>*)
    dictionaryWithContentsOfURL:(NSURL*)url
                          error:(NSError* _Nullable* _Nullable)error;
- (nullable ObjectType)objectForKeyedSubscript:(KeyType)key;
@end

@interface NSMutableDictionary<KeyType, ObjectType> : NSDictionary <KeyType, ObjectType>
- (void)setObject:(nullable ObjectType)object forKeyedSubscript:(KeyType<NSCopying>)key;
- (void)addEntriesFromDictionary:(NSDictionary<KeyType, ObjectType>*)other;
@end

@interface NSURL : NSObject <NSCopying>
+ (nullable instancetype)URLWithString:(NSString*)text;
+ (NSURL*)fileURLWithPath:(NSString*)path;
@end

@interface NSError : NSObject <NSCopying>
@property(readonly) NSString* localizedDescription;
+ (instancetype)errorWithDomain:(NSErrorDomain)domain
                           code:(NSInteger)code
                       userInfo:(nullable NSDictionary<NSErrorUserInfoKey, id>*)userInfo;
@end

@interface NSUUID : NSObject <NSCopying>
@property(readonly) NSString* UUIDString;
+ (instancetype)UUID;
@end

@interface NSNotification : NSObject <NSCopying>
@property(nullable, readonly) id object;
@end

@interface NSNotificationCenter : NSObject
@property(class, readonly) NSNotificationCenter* defaultCenter;
- (id<NSObject>)addObserverForName:(nullable NSNotificationName)name
                            object:(nullable id)object
                             queue:(nullable NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* notification))block;
- (void)postNotificationName:(NSNotificationName)name object:(nullable id)object;
- (void)removeObserver:(id)observer;
@end

// --- Time ----------------------------------------------------------------------------------------
@interface NSDate : NSObject <NSCopying>
@property(class, readonly) NSTimeInterval timeIntervalSinceReferenceDate;
@property(readonly) NSTimeInterval timeIntervalSinceNow;
+ (instancetype)dateWithTimeIntervalSinceReferenceDate:(NSTimeInterval)seconds;
+ (instancetype)dateWithTimeIntervalSinceNow:(NSTimeInterval)seconds;
@end

@interface NSTimeZone : NSObject <NSCopying>
@property(class, readonly) NSTimeZone* systemTimeZone;
+ (void)resetSystemTimeZone;
@end

@interface NSDateComponents : NSObject <NSCopying>
@property NSInteger year;
@property NSInteger month;
@property NSInteger day;
@property NSInteger hour;
@property NSInteger minute;
@property NSInteger second;
@end

extern "C" const NSCalendarIdentifier NSCalendarIdentifierGregorian;

@interface NSCalendar : NSObject <NSCopying>
+ (nullable NSCalendar*)calendarWithIdentifier:(NSCalendarIdentifier)identifier;
- (NSDateComponents*)componentsInTimeZone:(NSTimeZone*)zone fromDate:(NSDate*)date;
@end

// --- Run loop and queues -------------------------------------------------------------------------
extern "C" const NSRunLoopMode NSDefaultRunLoopMode;
extern "C" const NSRunLoopMode NSRunLoopCommonModes;

@interface NSTimer : NSObject
+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)seconds
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer* timer))block;
- (void)invalidate;
@end

@interface NSOperationQueue : NSObject
@property(class, readonly) NSOperationQueue* mainQueue;
@end

@interface NSRunLoop : NSObject
@property(class, readonly) NSRunLoop* mainRunLoop;
@property(class, readonly) NSRunLoop* currentRunLoop;
- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode;
- (BOOL)runMode:(NSRunLoopMode)mode beforeDate:(NSDate*)limit;
@end

@protocol OS_dispatch_object <NSObject>
@end
@protocol OS_dispatch_queue <OS_dispatch_object>
@end
@protocol OS_dispatch_source <OS_dispatch_object>
@end
typedef NSObject<OS_dispatch_object>* dispatch_object_t;
typedef NSObject<OS_dispatch_source>* dispatch_source_t;
typedef const struct dispatch_source_type_s* dispatch_source_type_t;
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
typedef void (^dispatch_block_t)(void);
enum : unsigned int { QOS_CLASS_USER_INITIATED = 0x19 };
extern "C" dispatch_queue_t dispatch_get_main_queue(void);
extern "C" dispatch_queue_t dispatch_get_global_queue(long identifier, size_t flags);
extern "C" void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
extern "C" const struct dispatch_source_type_s _dispatch_source_type_signal;
#define DISPATCH_SOURCE_TYPE_SIGNAL (&_dispatch_source_type_signal)
extern "C" dispatch_source_t dispatch_source_create(dispatch_source_type_t type, size_t handle,
                                                    size_t mask, dispatch_queue_t _Nullable queue);
extern "C" void dispatch_source_set_event_handler(dispatch_source_t source,
                                                  dispatch_block_t _Nullable handler);
extern "C" void dispatch_source_cancel(dispatch_source_t source);
extern "C" void dispatch_activate(dispatch_object_t object);

// --- Program and settings ------------------------------------------------------------------------
@interface NSBundle : NSObject
@property(class, readonly) NSBundle* mainBundle;
@property(readonly) NSString* bundlePath;
@end

NS_OPTIONS(uint64_t,
           NSActivityOptions){NSActivityUserInitiatedAllowingIdleSystemSleep = 0x00EFFFFF};

@interface NSProcessInfo : NSObject
@property(class, readonly) NSProcessInfo* processInfo;
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason;
@end

extern "C" NSString* const NSArgumentDomain;

@interface NSUserDefaults : NSObject
@property(class, readonly) NSUserDefaults* standardUserDefaults;
- (nullable instancetype)initWithSuiteName:(nullable NSString*)name;
- (BOOL)boolForKey:(NSString*)key;
- (nullable id)objectForKey:(NSString*)key;
- (void)setObject:(nullable id)value forKey:(NSString*)key;
- (void)setBool:(BOOL)value forKey:(NSString*)key;
- (void)setInteger:(NSInteger)value forKey:(NSString*)key;
- (void)removeObjectForKey:(NSString*)key;
- (void)removePersistentDomainForName:(NSString*)name;
- (void)removeVolatileDomainForName:(NSString*)name;
- (void)setVolatileDomain:(NSDictionary<NSString*, id>*)domain forName:(NSString*)name;
@end

@interface NSFileHandle : NSObject
@property(class, readonly) NSFileHandle* fileHandleWithNullDevice;
@end

@interface NSTask : NSObject
@property(nullable, copy) NSURL* executableURL;
@property(nullable, copy) NSArray<NSString*>* arguments;
@property(nullable, retain) id standardOutput;
@property(nullable, retain) id standardError;
- (BOOL)launchAndReturnError:(NSError* _Nullable* _Nullable)error;
@end

@interface NSUndoManager : NSObject
@property(readonly) BOOL canUndo;
- (void)removeAllActions;
@end

extern "C" NSString* NSHomeDirectory(void);
extern "C" SEL NSSelectorFromString(NSString* name);
extern "C" NSString* NSStringFromSelector(SEL selector);

// --- Geometry ------------------------------------------------------------------------------------
typedef struct {
  CGFloat x;
  CGFloat y;
} NSPoint;
typedef struct {
  CGFloat width;
  CGFloat height;
} NSSize;
typedef struct {
  NSPoint origin;
  NSSize size;
} NSRect;
typedef struct {
  NSUInteger location;
  NSUInteger length;
} NSRange;
typedef struct {
  CGFloat top;
  CGFloat left;
  CGFloat bottom;
  CGFloat right;
} NSEdgeInsets;

extern "C" {
extern const NSRect NSZeroRect;
NSPoint NSMakePoint(CGFloat x, CGFloat y);
NSSize NSMakeSize(CGFloat width, CGFloat height);
NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height);
NSRange NSMakeRange(NSUInteger location, NSUInteger length);
NSEdgeInsets NSEdgeInsetsMake(CGFloat top, CGFloat left, CGFloat bottom, CGFloat right);
CGFloat NSMinX(NSRect rect);
CGFloat NSMaxX(NSRect rect);
CGFloat NSMinY(NSRect rect);
CGFloat NSMaxY(NSRect rect);
CGFloat NSWidth(NSRect rect);
CGFloat NSHeight(NSRect rect);
BOOL NSEqualSizes(NSSize one, NSSize other);
BOOL NSEqualRects(NSRect one, NSRect other);
BOOL NSContainsRect(NSRect outer, NSRect inner);
}

#pragma clang assume_nonnull end

#include "http.h"
