#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/http_session.h"
#include "tests/support/linux_session.h"

namespace notewick {

using Result = tl::expected<HttpResponse, TransportError>;

// What the user reads of a failed request.
inline constexpr const char* LOST = "The connection was lost.";
inline constexpr const char* INSECURE = "A secure connection could not be made.";
inline constexpr const char* TOO_LARGE = "The server's answer is too large.";
inline constexpr const char* NOT_UNDERSTOOD = "The server's answer could not be understood.";

/// How an outcome reads in a test: "200 body", "204", or the description of the error.
inline std::string described(const Result& result) {
  if (!result) return result.error().description;
  if (!result->statusCode) return "no HTTP";
  return std::to_string(*result->statusCode) + (result->body ? " " + *result->body : "");
}

class CurlHttpSessionTest : public testing::Test {
 protected:
  static HttpRequest get(const std::string& url, double timeout = 5) {
    return {"GET", url, {{"User-Agent", "test/1.0"}}, std::nullopt, timeout};
  }
  static HttpRequest post(const std::string& url, const std::string& body, double timeout = 5) {
    return {"POST",
            url,
            {{"User-Agent", "test/1.0"}, {"Content-Type", "application/json"}},
            body,
            timeout};
  }

  void send(const HttpRequest& request) {
    session_->send(request,
                   [this](const Result& result) { outcomes_.push_back(described(result)); });
  }

  /// The outcome of one request.
  std::string outcome(const HttpRequest& request) {
    outcomes_.clear();
    send(request);
    EXPECT_THAT(outcomes_, testing::ElementsAre()) << "completed inside send";
    EXPECT_TRUE(waitUntil([this] { return !outcomes_.empty(); }));
    catchUp();
    EXPECT_EQ(outcomes_.size(), 1U);
    return outcomes_.empty() ? "" : outcomes_.front();
  }

  std::unique_ptr<HttpSession> session_ =
      std::make_unique<CurlHttpSession>(HttpSessionConfiguration{5});
  std::vector<std::string> outcomes_;
};

/// An answer as a server puts it on the wire.
[[nodiscard]] inline std::string answer(const std::string& status, const std::string& body = "",
                                        const std::string& headers = "") {
  return "HTTP/1.1 " + status + "\r\n" + headers +
         "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

}  // namespace notewick
