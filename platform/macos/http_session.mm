#include "platform/macos/http_session.h"

#include "platform/macos/text.h"

@interface NWRedirectRefusal : NSObject <NSURLSessionTaskDelegate>
@end

@implementation NWRedirectRefusal

- (void)URLSession:(NSURLSession*)session
                          task:(NSURLSessionTask*)task
    willPerformHTTPRedirection:(NSHTTPURLResponse*)response
                    newRequest:(NSURLRequest*)request
             completionHandler:(void (^)(NSURLRequest*))completionHandler {
  completionHandler(nil);
}

@end

namespace notewick {
namespace {

using Answer = tl::expected<HttpResponse, TransportError>;

tl::unexpected<TransportError> failure(NSError* error) {
  return tl::unexpected(TransportError{utf8(error.localizedDescription)});
}

NSURLRequest* urlRequest(const HttpRequest& request, NSURL* url) {
  NSMutableURLRequest* native =
      [NSMutableURLRequest requestWithURL:url
                              cachePolicy:NSURLRequestUseProtocolCachePolicy
                          timeoutInterval:request.timeout];
  native.HTTPMethod = nsString(request.method);
  for (const auto& [name, value] : request.headers) {
    [native setValue:nsString(value) forHTTPHeaderField:nsString(name)];
  }
  if (request.body) {
    native.HTTPBody = [NSData dataWithBytes:request.body->data() length:request.body->size()];
  }
  return native;
}

Answer answerFrom(NSData* data, NSURLResponse* response, NSError* error) {
  if (error != nil) return failure(error);
  HttpResponse answer;
  if ([response isKindOfClass:NSHTTPURLResponse.class]) {
    answer.statusCode = static_cast<int>(static_cast<NSHTTPURLResponse*>(response).statusCode);
  }
  if (data.length > 0) answer.body.emplace(static_cast<const char*>(data.bytes), data.length);
  return answer;
}

}  // namespace

UrlSession::UrlSession(const HttpSessionConfiguration& configuration, MainLoop& mainLoop)
    : mainLoop_(mainLoop) {
  NSURLSessionConfiguration* native = NSURLSessionConfiguration.ephemeralSessionConfiguration;
  native.timeoutIntervalForRequest = configuration.requestTimeout;
  native.HTTPCookieStorage = nil;
  native.URLCache = nil;
  native.URLCredentialStorage = nil;
  session_ = [NSURLSession sessionWithConfiguration:native
                                           delegate:[[NWRedirectRefusal alloc] init]
                                      delegateQueue:nil];
}

UrlSession::~UrlSession() { [session_ invalidateAndCancel]; }

void UrlSession::send(HttpRequest request, HttpCompletion completion) {
  MainLoop* const loop = &mainLoop_;
  const auto deliver = [loop, completion, alive = std::weak_ptr(alive_)](const Answer& answer) {
    loop->post([completion, alive, answer] {
      if (alive.lock()) completion(answer);
    });
  };
  NSURL* url = [NSURL URLWithString:nsString(request.url)];
  if (url == nil) {
    return deliver(failure([NSError errorWithDomain:NSURLErrorDomain
                                               code:NSURLErrorBadURL
                                           userInfo:nil]));
  }
  [[session_ dataTaskWithRequest:urlRequest(request, url)
               completionHandler:^(NSData* data, NSURLResponse* response, NSError* error) {
                 deliver(answerFrom(data, response, error));
               }] resume];
}

}  // namespace notewick
