// What a server may send: never more than a bounded part of it is taken.
#include "platform/linux/http/http_answer.h"
#include "tests/support/http_session_fixture.h"
#include "tests/support/raw_server.h"

namespace notewick {
namespace {

constexpr std::size_t MIB = 1024 * 1024;
constexpr const char* ok = "HTTP/1.1 200 OK\r\n";
constexpr const char* chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";

struct Flood {
  const char* name;
  std::string start;
  std::string piece;
  const char* outcome;
};

void PrintTo(const Flood& flood, std::ostream* out) {
  *out << flood.name;
}

class Floods : public CurlHttpSessionTest, public testing::WithParamInterface<Flood> {};

// What the kernels of both sides hold on the way counts as sent, too.
TEST_P(Floods, EndTheTransferAfterABoundedPart) {
  const Flood flood = GetParam();
  constexpr std::size_t endless = 200 * MIB;
  std::atomic<std::size_t> sent = 0;
  {
    const RawServer server([&](const RawConnection& connection) {
      (void)connection.readRequest();
      connection.write(flood.start);
      sent = connection.writeWithoutEnd(flood.piece, endless);
    });
    EXPECT_EQ(outcome(get(server.url())), flood.outcome);
  }
  EXPECT_LT(sent, 40 * MIB);
}

INSTANTIATE_TEST_SUITE_P(
    All, Floods,
    testing::Values(
        Flood{"OfHeaders", ok, "X: " + std::string(1000, 'x') + "\r\n",
              "The server's answer is too large."},
        Flood{"OfOneHeader", std::string(ok) + "X: ", std::string(4096, 'x'),
              "The server's answer is too large."},
        Flood{"OfOneStatusLine", "HTTP/1.1 200 ", std::string(4096, 'x'),
              "The server's answer is too large."},
        Flood{"OfInformationalStatuses", "", "HTTP/1.1 100 Continue\r\nX: y\r\n\r\n",
              "The server's answer is too large."},
        Flood{"OfTrailers", std::string(chunked) + "2\r\nhi\r\n0\r\n", "X: yyyyyyyyyy\r\n",
              "The server's answer is too large."},
        Flood{"OfNoise", "", std::string(4096, '\0'), NOT_UNDERSTOOD},
        Flood{"OfBody", std::string(ok) + "\r\n", std::string(65536, 'x'), "200"},
        Flood{"OfBodyWithItsLength", std::string(ok) + "Content-Length: 99999999999\r\n\r\n",
              std::string(65536, 'x'), "200"},
        Flood{"OfChunks", chunked, "1000\r\n" + std::string(4096, 'x') + "\r\n", "200"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(CurlHttpSessionTest, TheLargestHeadIsTakenWithAllItsHeads) {
  const std::string early = "HTTP/1.1 103 Early Hints\r\n\r\n";
  const std::string end = "Content-Length: 2\r\n\r\n";
  std::string head = early + ok;
  while (head.size() + 1000 < HttpAnswer::LARGEST_HEAD)
    head += "X: " + std::string(900, 'x') + "\r\n";
  head +=
      "X: " + std::string(HttpAnswer::LARGEST_HEAD - head.size() - end.size() - 5, 'x') + "\r\n";
  const RawServer largest(RawServer::answering(head + end + "hi"));
  EXPECT_EQ(outcome(get(largest.url())), "200 hi");
  const RawServer larger(RawServer::answering(head + "Y" + end + "hi"));
  EXPECT_EQ(outcome(get(larger.url())), "The server's answer is too large.");
}

TEST_F(CurlHttpSessionTest, TheLargestBodyIsTakenAndALargerOneLeavesTheStatus) {
  const std::string body(HttpAnswer::LARGEST_BODY, 'x');
  const RawServer largest(RawServer::answering(answer("200 OK", body)));
  EXPECT_EQ(outcome(get(largest.url(), 20)), "200 " + body);
  const RawServer larger(RawServer::answering(answer("503 Busy", body + "x")));
  EXPECT_EQ(outcome(get(larger.url(), 20)), "503");
  const RawServer unannounced(RawServer::answering("HTTP/1.1 200 OK\r\n\r\n" + body + "x"));
  EXPECT_EQ(outcome(get(unannounced.url(), 20)), "200");
}

}  // namespace
}  // namespace notewick
