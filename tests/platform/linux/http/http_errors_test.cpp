#include "platform/linux/http/http_errors.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace notewick {
namespace {

TEST(HttpErrorsTest, DescribesErrorsByTheirKind) {
  for (const auto& [code, text] :
       {std::pair(CURLE_COULDNT_RESOLVE_HOST, "The server could not be found."),
        std::pair(CURLE_COULDNT_RESOLVE_PROXY, "The proxy could not be found."),
        std::pair(CURLE_PROXY, "The proxy refused the connection."),
        std::pair(CURLE_GOT_NOTHING, "The connection was lost."),
        std::pair(CURLE_PARTIAL_FILE, "The connection was lost."),
        std::pair(CURLE_OPERATION_TIMEDOUT, "The request timed out."),
        std::pair(CURLE_PEER_FAILED_VERIFICATION, "A secure connection could not be made."),
        std::pair(CURLE_WEIRD_SERVER_REPLY, "The server's answer could not be understood.")}) {
    EXPECT_STREQ(descriptionOf(code), text);
  }
  EXPECT_STREQ(descriptionOf(CURLE_COULDNT_CONNECT, ECONNREFUSED), "The connection was refused.");
  EXPECT_STREQ(descriptionOf(CURLE_COULDNT_CONNECT, ENETUNREACH), "The connection failed.");
}

TEST(HttpErrorsTest, EveryCodeHasASentence) {
  for (int code = 1; code < CURL_LAST; ++code) {
    const std::string text = descriptionOf(static_cast<CURLcode>(code));
    EXPECT_TRUE(text.starts_with("The ") || text.starts_with("A ")) << code;
    EXPECT_TRUE(text.ends_with(".")) << code;
  }
}

}  // namespace
}  // namespace notewick
