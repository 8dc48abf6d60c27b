#pragma once

// Requests over HTTP and their answers.

#include "Foundation.h"

#pragma clang assume_nonnull begin

@class NSHTTPCookieStorage, NSHTTPURLResponse, NSURLCache, NSURLCredentialStorage, NSURLRequest;
@class NSURLResponse, NSURLSession, NSURLSessionDataTask, NSURLSessionTask;

typedef NS_ENUM(NSUInteger, NSURLRequestCachePolicy) { NSURLRequestUseProtocolCachePolicy = 0 };
extern "C" const NSErrorDomain NSURLErrorDomain;
enum : NSInteger { NSURLErrorBadURL = -1000 };

@interface NSURLRequest : NSObject <NSCopying>
+ (instancetype)requestWithURL:(NSURL*)url
                   cachePolicy:(NSURLRequestCachePolicy)policy
               timeoutInterval:(NSTimeInterval)seconds;
@end

@interface NSMutableURLRequest : NSURLRequest
@property(copy) NSString* HTTPMethod;
@property(nullable, copy) NSData* HTTPBody;
- (void)setValue:(nullable NSString*)value forHTTPHeaderField:(NSString*)field;
@end

@interface NSURLResponse : NSObject <NSCopying>
@end

@interface NSHTTPURLResponse : NSURLResponse
@property(readonly) NSInteger statusCode;
@property(readonly, copy) NSDictionary* allHeaderFields;
@end

@protocol NSURLSessionDelegate <NSObject>
@end

@protocol NSURLSessionTaskDelegate <NSURLSessionDelegate>
@optional
- (void)URLSession:(NSURLSession*)session
                          task:(NSURLSessionTask*)task
    willPerformHTTPRedirection:(NSHTTPURLResponse*)response
                    newRequest:(NSURLRequest*)request
             completionHandler:(void (^)(NSURLRequest* _Nullable request))completionHandler;
- (void)URLSession:(NSURLSession*)session
                    task:(NSURLSessionTask*)task
    didCompleteWithError:(nullable NSError*)error;
@end

typedef NS_ENUM(NSInteger, NSURLSessionResponseDisposition) {
  NSURLSessionResponseCancel = 0,
  NSURLSessionResponseAllow = 1
};

@protocol NSURLSessionDataDelegate <NSURLSessionTaskDelegate>
@optional
- (void)URLSession:(NSURLSession*)session
              dataTask:(NSURLSessionDataTask*)task
    didReceiveResponse:(NSURLResponse*)response
     completionHandler:(void (^)(NSURLSessionResponseDisposition disposition))completionHandler;
- (void)URLSession:(NSURLSession*)session
          dataTask:(NSURLSessionDataTask*)task
    didReceiveData:(NSData*)data;
@end

@interface NSURLSessionTask : NSObject <NSCopying>
@property(nullable, readonly, copy) NSURLResponse* response;
@property(readonly) NSUInteger taskIdentifier;
- (void)cancel;
- (void)resume;
@end

@interface NSURLSessionDataTask : NSURLSessionTask
@end

@interface NSURLSessionConfiguration : NSObject <NSCopying>
@property(class, readonly) NSURLSessionConfiguration* ephemeralSessionConfiguration;
@property NSTimeInterval timeoutIntervalForRequest;
@property(nullable, copy) NSDictionary* connectionProxyDictionary;
@property(nullable, retain) NSHTTPCookieStorage* HTTPCookieStorage;
@property(nullable, retain) NSURLCache* URLCache;
@property(nullable, retain) NSURLCredentialStorage* URLCredentialStorage;
@end

@interface NSURLSession : NSObject
+ (NSURLSession*)sessionWithConfiguration:(NSURLSessionConfiguration*)configuration
                                 delegate:(nullable id<NSURLSessionDelegate>)delegate
                            delegateQueue:(nullable NSOperationQueue*)queue;
@property(copy, readonly) NSURLSessionConfiguration* configuration;
@property(nullable, readonly, retain) id<NSURLSessionDelegate> delegate;
- (NSURLSessionDataTask*)dataTaskWithRequest:(NSURLRequest*)request;
- (void)invalidateAndCancel;
@end

#pragma clang assume_nonnull end
