// What a request comes to when the connection, the server or its answer fails.
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <thread>

#include "tests/support/http_session_fixture.h"
#include "tests/support/raw_server.h"

namespace notewick {
namespace {

using namespace std::chrono_literals;

/// What a server does to the connection instead of answering in full.
struct Cut {
  const char* name;
  const char* bytes;
  bool reset;
};

class Cuts : public QtHttpSessionTest, public testing::WithParamInterface<Cut> {};

TEST_P(Cuts, AreALostConnectionAndANoteIsNotSentAgain) {
  const Cut cut = GetParam();
  SharedLog log;
  const RawServer server([&](const RawConnection& connection) {
    log.add(connection.readRequest());
    connection.write(cut.bytes);
    if (cut.reset) connection.resetOnClose();
  });
  EXPECT_EQ(outcome(post(server.url(), R"({"note":1})")), "The connection was lost.");
  letTimePass(50ms);
  EXPECT_EQ(log.entries().size(), 1U);
  EXPECT_EQ(outcome(get(server.url())), "The connection was lost.");
}

INSTANTIATE_TEST_SUITE_P(
    All, Cuts,
    testing::Values(
        Cut{"BeforeTheAnswer", "", false}, Cut{"ByAReset", "", true},
        Cut{"InTheStatusLine", "HTTP/1.1 20", false},
        Cut{"InTheHeaders", "HTTP/1.1 200 OK\r\nContent-Le", false},
        Cut{"InTheBody", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf", false},
        Cut{"InTheBodyByAReset", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf", true},
        Cut{"InTheBodyOfAnError", "HTTP/1.1 500 No\r\nContent-Length: 9\r\n\r\nhalf", false}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(QtHttpSessionTest, AChunkedAnswerThatIsCutIsLostOrVisiblyIncomplete) {
  const RawServer server(
      RawServer::answering("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n9\r\nhalf"));
  EXPECT_THAT(outcome(get(server.url())), testing::AnyOf("The connection was lost.", "200 half"));
}

TEST_F(QtHttpSessionTest, WhatIsNoHttpIsATransportError) {
  const RawServer server(RawServer::answering("SSH-2.0-OpenSSH_9.2\r\n\r\n"));
  EXPECT_EQ(outcome(get(server.url())), "The connection was lost.");
}

TEST_F(QtHttpSessionTest, AnInformationalStatusIsNoAnswer) {
  for (const std::string status :
       {"101 Switching Protocols", "102 Processing", "103 Early Hints"}) {
    const RawServer server(
        RawServer::answering("HTTP/1.1 " + status + "\r\n\r\n" + answer("200 OK", "{}")));
    EXPECT_EQ(outcome(post(server.url(), "{}")), "The server's answer could not be understood.");
  }
}

TEST_F(QtHttpSessionTest, AnAnswerTooLargeForAnyUseIsATransportError) {
  const RawServer server([](const RawConnection& connection) {
    (void)connection.readRequest();
    connection.write("HTTP/1.1 200 OK\r\nContent-Length: 99999999999\r\n\r\n");
    const std::string piece(1'000'000, 'x');
    for (int count = 0; count < 80; ++count) connection.write(piece);
  });
  EXPECT_EQ(outcome(get(server.url())), "The server's answer is too large.");
}

TEST_F(QtHttpSessionTest, ARequestWhoseTurnDoesNotComeInItsTimeIsNeverSent) {
  const RawServer server([](const RawConnection& connection) {
    (void)connection.readRequest();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    connection.write(answer("200 OK"));
  });
  constexpr std::size_t many = 30;
  for (std::size_t count = 0; count < many; ++count) send(post(server.url(), "{}", 1.0));
  EXPECT_TRUE(waitUntil([this] { return outcomes_.size() == many; }));
  EXPECT_THAT(outcomes_, testing::Contains("200"));
  EXPECT_THAT(outcomes_, testing::Contains("The request timed out."));
  EXPECT_LT(server.connections(), many);
}

TEST_F(QtHttpSessionTest, AServerThatClosesWithoutSayingSoHoldsNothingUp) {
  const RawServer server(RawServer::answering(answer("200 OK")));
  constexpr std::size_t many = 300;
  for (std::size_t count = 0; count < many; ++count) send(post(server.url(), "{}"));
  EXPECT_TRUE(waitUntil([this] { return outcomes_.size() == many; }));
  EXPECT_THAT(outcomes_, testing::Each("200"));
  EXPECT_EQ(server.connections(), many);
}

TEST_F(QtHttpSessionTest, ARefusedConnectionIsATransportError) {
  std::string url;
  {
    const RawServer closed(RawServer::answering(""));
    url = closed.url();
  }
  EXPECT_EQ(outcome(get(url)), "The connection was refused.");
}

TEST_F(QtHttpSessionTest, WhatIsNoWebAddressIsATransportErrorInALaterTurn) {
  for (const char* url : {"", "velk.example", "https://", "http://[::1", "https://a b/", "//host/x",
                          "ftp://127.0.0.1/", "file:///etc/passwd", "data:,x", "qrc:/x"}) {
    EXPECT_EQ(outcome(get(url)), "The address is not valid.") << url;
  }
}

TEST_F(QtHttpSessionTest, AServerThatDoesNotAnswerIsGivenUpAfterTheTimeOfTheRequest) {
  const RawServer server([](const RawConnection& connection) { connection.waitForClose(); });
  QElapsedTimer time;
  time.start();
  EXPECT_EQ(outcome(get(server.url(), 0.3)), "The request timed out.");
  EXPECT_GE(time.elapsed(), 280);
  EXPECT_LT(time.elapsed(), 1000);
}

TEST_F(QtHttpSessionTest, ARequestWithoutATimeOfItsOwnTakesTheSessions) {
  session_ = std::make_unique<QtHttpSession>(HttpSessionConfiguration{0.2});
  const RawServer server([](const RawConnection& connection) { connection.waitForClose(); });
  EXPECT_EQ(outcome(get(server.url(), 0)), "The request timed out.");
}

TEST_F(QtHttpSessionTest, ASlowAnswerThatKeepsComingIsNotGivenUp) {
  const RawServer server([](const RawConnection& connection) {
    (void)connection.readRequest();
    connection.write("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n");
    for (int count = 0; count < 10; ++count) {
      std::this_thread::sleep_for(100ms);
      connection.write("x");
    }
  });
  EXPECT_EQ(outcome(get(server.url(), 0.4)), "200 xxxxxxxxxx");
}

TEST_F(QtHttpSessionTest, AnAnswerThatStopsHalfWayIsGivenUp) {
  const RawServer server([](const RawConnection& connection) {
    (void)connection.readRequest();
    connection.write("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhalf");
    connection.waitForClose();
  });
  EXPECT_EQ(outcome(get(server.url(), 0.3)), "The request timed out.");
}

TEST_F(QtHttpSessionTest, AServerThatNeverFinishesTheHandshakeIsGivenUp) {
  const RawServer server([](const RawConnection& connection) { connection.waitForClose(); });
  EXPECT_EQ(outcome(get("https" + server.url().substr(4), 0.3)), "The request timed out.");
}

TEST_F(QtHttpSessionTest, RequestsThatWereGivenUpDoNotBlockTheNextOnes) {
  std::atomic<bool> works = false;
  const RawServer server([&](const RawConnection& connection) {
    if (!works) return connection.waitForClose();
    (void)connection.readRequest();
    connection.write(answer("200 OK"));
  });
  const QDeadlineTimer threeRounds(1500);
  for (int count = 0; count < 8; ++count) {
    send(get("https" + server.url().substr(4), 0.5));
    send(get(server.url(), 0.5));
  }
  EXPECT_TRUE(waitUntil([this] { return outcomes_.size() == 16; }));
  EXPECT_FALSE(threeRounds.hasExpired());
  EXPECT_THAT(outcomes_, testing::Each("The request timed out."));
  works = true;
  EXPECT_EQ(outcome(get(server.url())), "200");
}

}  // namespace
}  // namespace notewick
