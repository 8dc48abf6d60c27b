#include "platform/macos/http_session.h"

#include <utility>

#include "platform/macos/bridge/text.h"
#include "platform/macos/http/http_answers.h"
#include "platform/web_address.h"

namespace notewick {
namespace {

NSURLSessionConfiguration* ephemeral(const HttpSessionConfiguration& configuration) {
  NSURLSessionConfiguration* native = NSURLSessionConfiguration.ephemeralSessionConfiguration;
  native.timeoutIntervalForRequest = configuration.requestTimeout;
  native.HTTPCookieStorage = nil;
  native.URLCache = nil;
  native.URLCredentialStorage = nil;
  return native;
}

NSURLSessionConfiguration* withoutProxies(NSURLSessionConfiguration* configuration) {
  configuration.connectionProxyDictionary = @{};
  return configuration;
}

NSURLSession* session(NSURLSessionConfiguration* configuration) {
  return [NSURLSession sessionWithConfiguration:configuration
                                       delegate:[[NWHttpAnswers alloc] init]
                                  delegateQueue:NSOperationQueue.mainQueue];
}

NWHttpAnswers* answersOf(NSURLSession* session) {
  return static_cast<NWHttpAnswers*>(session.delegate);
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

}  // namespace

UrlSession::UrlSession(const HttpSessionConfiguration& configuration, MainLoop& mainLoop)
    : session_(session(ephemeral(configuration))),
      loopbackSession_(session(withoutProxies(ephemeral(configuration)))),
      mainLoop_(mainLoop) {}

UrlSession::~UrlSession() {
  for (NSURLSession* session in @[ session_, loopbackSession_ ]) {
    [answersOf(session) forgetAll];
    [session invalidateAndCancel];
  }
}

NSURLSession* UrlSession::native(const std::string& url) const {
  return isLoopbackAddress(url) ? loopbackSession_ : session_;
}

void UrlSession::send(HttpRequest request, HttpCompletion completion) {
  NSURL* url = [NSURL URLWithString:nsString(request.url)];
  if (url == nil) return failLater(std::move(completion));
  NSURLSession* session = native(request.url);
  NSURLSessionDataTask* task = [session dataTaskWithRequest:urlRequest(request, url)];
  [answersOf(session) expectAnswerOf:task then:std::move(completion)];
  [task resume];
}

void UrlSession::failLater(HttpCompletion completion) {
  const TransportError error = transportError([NSError errorWithDomain:NSURLErrorDomain
                                                                  code:NSURLErrorBadURL
                                                              userInfo:nil]);
  mainLoop_.post([completion = std::move(completion), error, alive = std::weak_ptr(alive_)] {
    if (alive.lock()) completion(tl::unexpected(error));
  });
}

}  // namespace notewick
