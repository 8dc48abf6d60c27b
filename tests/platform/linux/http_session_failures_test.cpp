// What a request comes to when the connection, the server or its answer fails.
#include <QElapsedTimer>
#include <semaphore>
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

constexpr const char* NINE_BYTES = "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf";

TEST_F(CurlHttpSessionTest, ACutIsALostConnectionAndANoteIsNotSentAgain) {
  for (const Cut& cut :
       {Cut{"before the answer", "", false}, Cut{"by a reset", "", true},
        Cut{"in the status line", "HTTP/1.1 20", false},
        Cut{"in the headers", "HTTP/1.1 200 OK\r\nContent-Le", false},
        Cut{"in the body", NINE_BYTES, false}, Cut{"in the body by a reset", NINE_BYTES, true},
        Cut{"in a chunk", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n9\r\nhalf", false},
        Cut{"between chunks", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nhi\r\n",
            false},
        Cut{"after an informational status", "HTTP/1.1 103 Early Hints\r\n\r\n", false},
        Cut{"in the body of an error", "HTTP/1.1 500 No\r\nContent-Length: 9\r\n\r\nhalf",
            false}}) {
    SCOPED_TRACE(cut.name);
    SharedLog log;
    const RawServer server([&](const RawConnection& connection) {
      log.add(connection.readRequest());
      connection.write(cut.bytes);
      if (cut.reset) connection.resetOnClose();
    });
    EXPECT_EQ(outcome(post(server.url(), R"({"note":1})")), LOST);
    EXPECT_EQ(outcome(get(server.url())), LOST);
    ASSERT_EQ(log.entries().size(), 2U);
    EXPECT_TRUE(log.entries().back().starts_with("GET")) << "and no second POST before";
  }
}

TEST_F(CurlHttpSessionTest, WhatIsNoWebAddressIsATransportErrorInALaterTurn) {
  for (const char* url : {"", "velk.example", "https://", "http://[::1", "https://a b/", "//host/x",
                          "ftp://127.0.0.1/", "file:///etc/passwd", "data:,x", "qrc:/x"}) {
    EXPECT_EQ(outcome(get(url)), "The address is not valid.") << url;
  }
}

TEST_F(CurlHttpSessionTest, AServerThatDoesNotAnswerIsGivenUpAfterTheTimeOfTheRequest) {
  const RawServer server([](const RawConnection& connection) { connection.waitForClose(); });
  QElapsedTimer time;
  time.start();
  EXPECT_EQ(outcome(get(server.url(), 0.3)), "The request timed out.");
  EXPECT_GE(time.elapsed(), 280);
}

TEST_F(CurlHttpSessionTest, ARequestWithoutATimeOfItsOwnTakesTheSessions) {
  session_ = std::make_unique<CurlHttpSession>(HttpSessionConfiguration{0.2});
  const RawServer server([](const RawConnection& connection) { connection.waitForClose(); });
  EXPECT_EQ(outcome(get(server.url(), 0)), "The request timed out.");
}

TEST_F(CurlHttpSessionTest, AnAnswerThatComesByteByByteIsNotGivenUp) {
  const RawServer server([](const RawConnection& connection) {
    (void)connection.readRequest();
    for (const char byte : answer("200 OK", std::string(40, 'x'))) {
      std::this_thread::sleep_for(80ms);
      connection.write(std::string(1, byte));
    }
  });
  EXPECT_EQ(outcome(get(server.url(), 4)), "200 " + std::string(40, 'x'));
}

// More than the system holds on the way between the two.
TEST_F(CurlHttpSessionTest, ABodyThatIsTakenSlowlyIsNotGivenUp) {
  constexpr int PIECES = 100;
  constexpr std::size_t PIECE = 400'000;
  const RawServer server([](const RawConnection& connection) {
    for (int count = 0; count < PIECES; ++count) {
      (void)connection.read(PIECE);
      std::this_thread::sleep_for(25ms);
    }
    connection.write(answer("200 OK"));
    connection.waitForClose();
  });
  EXPECT_EQ(outcome(post(server.url(), std::string(PIECES * PIECE, 'x'), 2)), "200");
}

TEST_F(CurlHttpSessionTest, ABodyThatIsNotTakenIsGivenUp) {
  std::binary_semaphore end(0);
  const RawServer server([&](const RawConnection&) { end.acquire(); });
  EXPECT_EQ(outcome(post(server.url(), std::string(40'000'000, 'x'), 0.3)),
            "The request timed out.");
  end.release();
}

TEST_F(CurlHttpSessionTest, AnAnswerThatStopsHalfWayIsGivenUp) {
  const RawServer server([](const RawConnection& connection) {
    (void)connection.readRequest();
    connection.write("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhalf");
    connection.waitForClose();
  });
  EXPECT_EQ(outcome(get(server.url(), 0.3)), "The request timed out.");
}

TEST_F(CurlHttpSessionTest, RequestsThatWereGivenUpDoNotBlockTheNextOnes) {
  std::atomic<bool> works = false;
  const RawServer server([&](const RawConnection& connection) {
    if (!works) return connection.waitForClose();
    (void)connection.readRequest();
    connection.write(answer("200 OK"));
  });
  for (int count = 0; count < 8; ++count) {
    send(get("https" + server.url().substr(4), 0.5));
    send(get(server.url(), 0.5));
  }
  EXPECT_TRUE(waitUntil([this] { return outcomes_.size() == 16; }));
  EXPECT_THAT(outcomes_, testing::Each("The request timed out."));
  works = true;
  EXPECT_EQ(outcome(get(server.url())), "200");
}

}  // namespace
}  // namespace notewick
