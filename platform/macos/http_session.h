#pragma once

#import <Foundation/Foundation.h>

#include <memory>

#include "platform/http_session.h"
#include "platform/main_loop.h"

namespace notewick {

/// Ephemeral URL sessions. Besides the headers given they send what the system adds to every
/// request: Host, Accept, Accept-Encoding, Accept-Language, Connection and Content-Length.
///
/// Requests go through the proxies of the user's network settings, which the system looks up for
/// each. Loopback never does: macOS seems to leave it out of all proxies but promises nothing, so
/// that such requests have a session of their own that knows no proxy.
class UrlSession final : public HttpSession {
 public:
  UrlSession(const HttpSessionConfiguration& configuration, MainLoop& mainLoop);
  UrlSession(const UrlSession&) = delete;
  ~UrlSession() override;

  void send(HttpRequest request, HttpCompletion completion) override;

  /// The native session that takes requests to this address; public for tests.
  [[nodiscard]] NSURLSession* native(const std::string& url) const;

 private:
  void failLater(HttpCompletion completion);

  NSURLSession* session_;
  NSURLSession* loopbackSession_;
  MainLoop& mainLoop_;
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace notewick
