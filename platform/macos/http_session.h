#pragma once

#import <Foundation/Foundation.h>

#include <memory>

#include "platform/http_session.h"
#include "platform/main_loop.h"

namespace notewick {

/// An ephemeral URL session. Besides the headers given it sends what the system adds to every
/// request: Host, Accept, Accept-Encoding, Accept-Language, Connection and Content-Length.
class UrlSession final : public HttpSession {
 public:
  UrlSession(const HttpSessionConfiguration& configuration, MainLoop& mainLoop);
  ~UrlSession() override;

  void send(HttpRequest request, HttpCompletion completion) override;

 private:
  NSURLSession* session_;
  MainLoop& mainLoop_;
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace notewick
