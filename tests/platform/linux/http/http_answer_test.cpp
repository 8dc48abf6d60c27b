#include "platform/linux/http/http_answer.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

using std::string_literals::operator""s;

class HttpAnswerTest : public testing::Test {
 protected:
  static bool take(HttpAnswer& answer, std::initializer_list<const char*> lines) {
    for (const char* line : lines) {
      if (!answer.takeLine(line)) return false;
    }
    return true;
  }

  static std::string described(const HttpAnswer& answer,
                               const std::optional<TransportError>& failure = std::nullopt) {
    const HttpOutcome outcome = answer.outcome(failure);
    if (!outcome) return outcome.error().description;
    return std::to_string(*outcome->statusCode) + (outcome->body ? " " + *outcome->body : "");
  }

  HttpAnswer fromService_{FirstHead::service};
  HttpAnswer throughProxy_{FirstHead::proxy};
};

TEST_F(HttpAnswerTest, AStatusEndsWithABlankOrTheLine) {
  for (const auto& line : {"HTTP/1.1 200\r\n"s, "HTTP/1.1 200 \r\n"s, "HTTP/1.1 200\n"s})
    EXPECT_TRUE(HttpAnswer(FirstHead::service).takeLine(line)) << line;
  for (const auto& line : {"HTTP/1.1 200K\r\n"s, "HTTP/1.1 200\0OK\r\n"s, "HTTP/1.1 200"s})
    EXPECT_FALSE(HttpAnswer(FirstHead::service).takeLine(line)) << line;
}

TEST_F(HttpAnswerTest, PiecesMakeUpTheBody) {
  EXPECT_TRUE(take(fromService_, {"HTTP/1.1 404 No\n", "\n"}));
  EXPECT_TRUE(fromService_.takeBody("no") && fromService_.takeBody("thing"));
  EXPECT_EQ(described(fromService_), "404 nothing");
}

TEST_F(HttpAnswerTest, OnlyAHeadThatEndsIsAnAnswer) {
  EXPECT_EQ(described(fromService_), "The connection was lost.");
  EXPECT_TRUE(take(fromService_, {"HTTP/1.1 200 OK\r\n", "A: b\r\n"}));
  EXPECT_EQ(described(fromService_), "The connection was lost.");
  EXPECT_TRUE(take(fromService_, {"\r\n"}));
  EXPECT_EQ(described(fromService_), "200");
}

TEST_F(HttpAnswerTest, AFailureGoesBeforeWhatCame) {
  EXPECT_TRUE(take(fromService_, {"HTTP/1.1 200 OK\r\n", "\r\n"}));
  EXPECT_TRUE(fromService_.takeBody("half"));
  EXPECT_EQ(described(fromService_, TransportError{"cut"}), "cut");
}

TEST_F(HttpAnswerTest, ALargerBodyEndsTheTransferAndLeavesTheStatus) {
  EXPECT_TRUE(take(fromService_, {"HTTP/1.1 500 No\r\n", "\r\n"}));
  EXPECT_TRUE(fromService_.takeBody(std::string(HttpAnswer::LARGEST_BODY, 'x')));
  EXPECT_FALSE(fromService_.takeBody("x"));
  EXPECT_EQ(described(fromService_, TransportError{"ended"}), "500");
}

TEST_F(HttpAnswerTest, ABodyThatIsLeftOutDoesNotMakeAnInformationalStatusAnAnswer) {
  EXPECT_TRUE(take(fromService_, {"HTTP/1.1 103 Early\r\n"}));
  fromService_.leaveBodyOut();
  EXPECT_EQ(described(fromService_, TransportError{"ended"}), "The connection was lost.");
}

TEST_F(HttpAnswerTest, AllHeadsCountTogetherFromTheFirstByteOn) {
  const std::string line(HttpAnswer::LARGEST_HEAD / 2, 'x');
  EXPECT_TRUE(take(fromService_, {"HTTP/1.1 100 Continue\r\n", line.c_str(), "\r\n"}));
  EXPECT_FALSE(take(fromService_, {"HTTP/1.1 200 OK\r\n", line.c_str()}));
  EXPECT_EQ(described(fromService_, TransportError{"ended"}), "The server's answer is too large.");
}

TEST_F(HttpAnswerTest, ATrailerChangesNothing) {
  EXPECT_TRUE(take(fromService_, {"HTTP/1.1 200 OK\r\n", "\r\n"}));
  EXPECT_TRUE(fromService_.takeBody("hi"));
  EXPECT_TRUE(take(fromService_, {"HTTP/1.1 500 No\r\n", "\r\n"}));
  EXPECT_EQ(described(fromService_), "200 hi");
}

TEST_F(HttpAnswerTest, TheProxysConsentIsNotTheServicesAnswer) {
  EXPECT_TRUE(take(throughProxy_, {"HTTP/1.1 200 Connection established\r\n", "\r\n"}));
  EXPECT_EQ(described(throughProxy_), "The connection was lost.");
  EXPECT_TRUE(take(throughProxy_, {"HTTP/1.1 407 Asks\r\n", "\r\n"}));
  EXPECT_EQ(described(throughProxy_), "407");
}

TEST_F(HttpAnswerTest, TheProxysRefusalEndsTheTransfer) {
  EXPECT_FALSE(
      take(throughProxy_, {"HTTP/1.1 100 Wait\r\n", "\r\n", "HTTP/1.1 403 No\r\n", "\r\n"}));
  EXPECT_EQ(described(throughProxy_), "The proxy refused the connection.");
  HttpAnswer asks(FirstHead::proxy);
  EXPECT_FALSE(take(asks, {"HTTP/1.1 407 Who\r\n", "\r\n"}));
  EXPECT_EQ(described(asks), "The proxy asks for a user name and a password.");
}

}  // namespace
}  // namespace notewick
