#include "platform/macos/http/http_answers.h"

#include <map>
#include <utility>

#include "platform/macos/bridge/text.h"

namespace notewick {
namespace {

constexpr std::size_t LONGEST_BODY = 8 * 1024 * 1024;
constexpr std::size_t LONGEST_HEAD = 256 * 1024;

/// What has come of one answer.
struct Transfer {
  HttpCompletion completion;
  std::string body;
  bool bodyIsTooLong = false;
};

std::size_t headSize(NSURLResponse* response) {
  if (![response isKindOfClass:NSHTTPURLResponse.class]) return 0;
  NSDictionary<NSString*, NSString*>* head =
      static_cast<NSHTTPURLResponse*>(response).allHeaderFields;
  std::size_t size = 0;
  for (NSString* name in head) size += name.length + head[name].length;
  return size;
}

HttpResponse answer(NSURLResponse* response, Transfer& transfer) {
  HttpResponse answer;
  if ([response isKindOfClass:NSHTTPURLResponse.class]) {
    answer.statusCode = static_cast<int>(static_cast<NSHTTPURLResponse*>(response).statusCode);
  }
  if (!transfer.body.empty()) answer.body = std::move(transfer.body);
  return answer;
}

}  // namespace

TransportError transportError(NSError* error) { return {utf8(error.localizedDescription)}; }

}  // namespace notewick

@implementation NWHttpAnswers {
  std::map<NSUInteger, notewick::Transfer> _transfers;
}

- (void)expectAnswerOf:(NSURLSessionTask*)task then:(notewick::HttpCompletion)completion {
  _transfers[task.taskIdentifier].completion = std::move(completion);
}

- (void)forgetAll {
  _transfers.clear();
}

- (void)URLSession:(NSURLSession*)session
                          task:(NSURLSessionTask*)task
    willPerformHTTPRedirection:(NSHTTPURLResponse*)response
                    newRequest:(NSURLRequest*)request
             completionHandler:(void (^)(NSURLRequest*))completionHandler {
  completionHandler(nil);
}

- (void)URLSession:(NSURLSession*)session
              dataTask:(NSURLSessionDataTask*)task
    didReceiveResponse:(NSURLResponse*)response
     completionHandler:(void (^)(NSURLSessionResponseDisposition))completionHandler {
  const bool isTooLong = notewick::headSize(response) > notewick::LONGEST_HEAD;
  completionHandler(isTooLong ? NSURLSessionResponseCancel : NSURLSessionResponseAllow);
}

- (void)URLSession:(NSURLSession*)session
          dataTask:(NSURLSessionDataTask*)task
    didReceiveData:(NSData*)data {
  const auto found = _transfers.find(task.taskIdentifier);
  if (found == _transfers.end() || found->second.bodyIsTooLong) return;
  notewick::Transfer& transfer = found->second;
  if (transfer.body.size() + data.length <= notewick::LONGEST_BODY) {
    transfer.body.append(static_cast<const char*>(data.bytes), data.length);
    return;
  }
  transfer.bodyIsTooLong = true;
  transfer.body = {};
  [task cancel];
}

- (void)URLSession:(NSURLSession*)session
                    task:(NSURLSessionTask*)task
    didCompleteWithError:(NSError*)error {
  auto finished = _transfers.extract(task.taskIdentifier);
  if (finished.empty()) return;
  notewick::Transfer& transfer = finished.mapped();
  if (error != nil && !transfer.bodyIsTooLong) {
    return transfer.completion(tl::unexpected(notewick::transportError(error)));
  }
  transfer.completion(notewick::answer(task.response, transfer));
}

@end
