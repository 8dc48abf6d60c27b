// What a server may send: never more than a bounded part of it is taken.
#include "platform/linux/http/http_answer.h"
#include "tests/support/http_session_fixture.h"
#include "tests/support/raw_server.h"

namespace notewick {
namespace {

constexpr std::size_t MIB = 1024UL * 1024;
constexpr const char* OK = "HTTP/1.1 200 OK\r\n";
constexpr const char* CHUNKED = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";

struct Flood {
  const char* of;
  std::string start;
  std::string piece;
  const char* outcome;
};

// What the kernels of both sides hold on the way counts as sent, too.
TEST_F(CurlHttpSessionTest, AFloodEndsTheTransferAfterABoundedPart) {
  constexpr std::size_t ENDLESS = 200 * MIB;
  for (const Flood& flood :
       {Flood{"headers", OK, "X: " + std::string(1000, 'x') + "\r\n", TOO_LARGE},
        Flood{"one header", std::string(OK) + "X: ", std::string(4096, 'x'), TOO_LARGE},
        Flood{"one status line", "HTTP/1.1 200 ", std::string(4096, 'x'), TOO_LARGE},
        Flood{"informational statuses", "", "HTTP/1.1 100 Continue\r\nX: y\r\n\r\n", TOO_LARGE},
        Flood{"trailers", std::string(CHUNKED) + "2\r\nhi\r\n0\r\n", "X: yyyyyyyyyy\r\n",
              TOO_LARGE},
        Flood{"noise", "", std::string(4096, '\0'), NOT_UNDERSTOOD},
        Flood{"a body", std::string(OK) + "\r\n", std::string(65536, 'x'), "200"},
        Flood{"a body with its length", std::string(OK) + "Content-Length: 99999999999\r\n\r\n",
              std::string(65536, 'x'), "200"},
        Flood{"chunks", CHUNKED, "1000\r\n" + std::string(4096, 'x') + "\r\n", "200"}}) {
    SCOPED_TRACE(flood.of);
    std::atomic<std::size_t> sent = 0;
    {
      const RawServer server([&](const RawConnection& connection) {
        (void)connection.readRequest();
        connection.write(flood.start);
        sent = connection.writeWithoutEnd(flood.piece, ENDLESS);
      });
      EXPECT_EQ(outcome(get(server.url())), flood.outcome);
    }
    EXPECT_LT(sent, 40 * MIB);
  }
}

TEST_F(CurlHttpSessionTest, TheLargestHeadIsTakenWithAllItsHeads) {
  const std::string early = "HTTP/1.1 103 Early Hints\r\n\r\n";
  const std::string end = "Content-Length: 2\r\n\r\n";
  std::string head = early + OK;
  while (head.size() + 1000 < HttpAnswer::LARGEST_HEAD)
    head += "X: " + std::string(900, 'x') + "\r\n";
  head +=
      "X: " + std::string(HttpAnswer::LARGEST_HEAD - head.size() - end.size() - 5, 'x') + "\r\n";
  const RawServer largest(RawServer::answering(head + end + "hi"));
  EXPECT_EQ(outcome(get(largest.url())), "200 hi");
  const RawServer larger(RawServer::answering(head + "Y" + end + "hi"));
  EXPECT_EQ(outcome(get(larger.url())), TOO_LARGE);
}

TEST_F(CurlHttpSessionTest, TheLargestBodyIsTakenAndALargerOneLeavesTheStatus) {
  const std::string body(HttpAnswer::LARGEST_BODY, 'x');
  const RawServer largest(RawServer::answering(answer("200 OK", body)));
  EXPECT_EQ(outcome(get(largest.url(), 20)), "200 " + body);
  const RawServer larger(RawServer::answering(answer("503 Busy", body + "x")));
  EXPECT_EQ(outcome(get(larger.url(), 20)), "503");
}

}  // namespace
}  // namespace notewick
