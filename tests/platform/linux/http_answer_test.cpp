#include "platform/linux/http_answer.h"

#include <gtest/gtest.h>

#include <QNetworkReply>

namespace notewick {
namespace {

/// A reply that ended with an error before any answer came.
class FailedReply : public QNetworkReply {
 public:
  explicit FailedReply(NetworkError error) {
    setError(error, "GET https://velk.example/secret failed");
    open(ReadOnly);
  }
  void abort() override {}

 protected:
  qint64 readData(char* /*data*/, qint64 /*size*/) override { return -1; }
};

std::string descriptionOf(QNetworkReply::NetworkError error) {
  FailedReply reply(error);
  const auto answer = answerOf(reply);
  return answer ? "answered" : answer.error().description;
}

TEST(HttpAnswerTest, DescribesErrorsByTheirKind) {
  EXPECT_EQ(descriptionOf(QNetworkReply::HostNotFoundError), "The server could not be found.");
  EXPECT_EQ(descriptionOf(QNetworkReply::ConnectionRefusedError), "The connection was refused.");
  EXPECT_EQ(descriptionOf(QNetworkReply::RemoteHostClosedError), "The connection was lost.");
  EXPECT_EQ(descriptionOf(QNetworkReply::TimeoutError), "The request timed out.");
  EXPECT_EQ(descriptionOf(QNetworkReply::OperationCanceledError), "The request timed out.");
  EXPECT_EQ(descriptionOf(QNetworkReply::SslHandshakeFailedError),
            "A secure connection could not be made.");
  EXPECT_EQ(descriptionOf(QNetworkReply::ProtocolFailure),
            "The server's answer could not be understood.");
}

TEST(HttpAnswerTest, NoDescriptionTellsTheAddress) {
  for (int error = 1; error < 500; ++error) {
    const std::string text = descriptionOf(static_cast<QNetworkReply::NetworkError>(error));
    EXPECT_NE(text, "answered") << error;
    EXPECT_EQ(text.find("velk"), std::string::npos) << text;
  }
}

TEST(HttpAnswerTest, AnErrorWithoutAStatusIsNoAnswer) {
  EXPECT_EQ(descriptionOf(QNetworkReply::ContentNotFoundError), "The connection failed.");
}

}  // namespace
}  // namespace notewick
