// What unusual and broken answers come to. A complete answer of HTTP/1.x counts, whatever it says;
// nothing else does.
#include "tests/support/http_session_fixture.h"
#include "tests/support/raw_server.h"

namespace notewick {
namespace {

struct Case {
  std::string bytes;
  std::string outcome;
};

std::string ok(const std::string& headers, const std::string& body) {
  return "HTTP/1.1 200 OK\r\n" + headers + "\r\n" + body;
}

std::string lengths(const std::string& length, const std::string& body) {
  return ok("Content-Length: " + length + "\r\n", body);
}

std::string chunks(const std::string& body) {
  return ok("Transfer-Encoding: chunked\r\n", body);
}

class OddAnswers : public CurlHttpSessionTest {
 protected:
  void expect(const std::vector<Case>& cases) {
    for (const Case& one : cases) {
      const RawServer server(RawServer::answering(one.bytes));
      EXPECT_EQ(outcome(get(server.url())), one.outcome) << one.bytes.substr(0, 200);
    }
  }
};

TEST_F(OddAnswers, AStatusLineIsThatOfHttp1) {
  const std::string rest = "\r\nContent-Length: 2\r\n\r\nhi";
  for (const char* line : {"HTTP/1.1 200 OK", "HTTP/1.0 200 OK", "HTTP/1.1 200", "HTTP/1.1 200 "}) {
    expect({{line + rest, "200 hi"}});
  }
  expect({{"HTTP/1.1 600 Far" + rest, "600 hi"}, {"HTTP/1.1 999 Out" + rest, "999 hi"}});
  for (const char* line :
       {"HTTP/0.9 200 OK", "HTTP/1 200 OK", "HTTP/1.10 200 OK", "HTTP/2 200", "http/1.1 200 OK",
        "ICY 200 OK", "HTTP/1.1", "HTTP/1.1\t200", "HTTP/1.1 200OK", "HTTP/1.1 2000 OK",
        "HTTP/1.1 20 OK", "HTTP/1.1 -200 OK", "HTTP/1.1 099 OK"}) {
    expect({{line + rest, NOT_UNDERSTOOD}});
  }
}

TEST_F(OddAnswers, NothingElseIsAnAnswer) {
  expect({{"<html>hello</html>", NOT_UNDERSTOOD},
          {R"({"accessToken":"a"})", NOT_UNDERSTOOD},
          {"SSH-2.0-OpenSSH_9.2\r\n\r\n", NOT_UNDERSTOOD},
          {"\r\n" + lengths("2", "hi"), NOT_UNDERSTOOD},
          {" " + lengths("2", "hi"), NOT_UNDERSTOOD},
          {"junk\r\n" + lengths("2", "hi"), NOT_UNDERSTOOD},
          {"HTTP", LOST}});
}

TEST_F(OddAnswers, InformationalStatusesArePassedOver) {
  for (const std::string status : {"100 Continue", "199 X"}) {
    const std::string head = "HTTP/1.1 " + status + "\r\nContent-Length: 5\r\n\r\n";
    expect({{head + head + lengths("2", "hi"), "200 hi"},
            {head + "junk", NOT_UNDERSTOOD},
            {head, LOST}});
  }
  const std::string change = "HTTP/1.1 101 Switching Protocols\r\n\r\n";
  expect({{change + lengths("2", "hi"), NOT_UNDERSTOOD}});
}

TEST_F(OddAnswers, BrokenChunksAreALostConnection) {
  for (const char* body :
       {"9\r\nhalf", "2\r\nhi\r\n0\r\n", "zz\r\nhi\r\n0\r\n\r\n", "-1\r\nhi\r\n0\r\n\r\n",
        "2\r\nhiXX0\r\n\r\n", "FFFFFFFFFFFFFFFFF\r\nhi", "2\r\nhi\r\n0\r\nX: y\r\n"}) {
    expect({{chunks(body), LOST}});
  }
  expect({{ok("Transfer-Encoding: chunked\r\nContent-Length: 3\r\n", "2\r\nhi"), LOST},
          {chunks("0x2\r\nhi\r\n0\r\n\r\n"), NOT_UNDERSTOOD}});
}

TEST_F(OddAnswers, WholeChunksAreABody) {
  for (const char* body : {"2\r\nhi\r\n0\r\n\r\n", "2;a=b\r\nhi\r\n0\r\n\r\n",
                           "1\r\nh\r\n1\r\ni\r\n0\r\n\r\n", "2\r\nhi\r\n0\r\nX: y\r\n\r\n"}) {
    expect({{chunks(body), "200 hi"}});
  }
  expect({{ok("Content-Length: 3\r\nTransfer-Encoding: chunked\r\n", "2\r\nhi\r\n0\r\n\r\n"),
           "200 hi"},
          {chunks("2\r\nhi\r\n0\r\nHTTP/1.1 500 No\r\n\r\n"), NOT_UNDERSTOOD}});
}

TEST_F(OddAnswers, ALengthIsANumberAndHolds) {
  expect({{lengths("2", "hi"), "200 hi"},
          {lengths("1", "hi"), "200 h"},
          {lengths("0", "hi"), "200"},
          {lengths("abc", "hi"), NOT_UNDERSTOOD},
          {lengths("-5", "hi"), NOT_UNDERSTOOD},
          {lengths("", "hi"), NOT_UNDERSTOOD},
          {answer("204 No Content", "hi"), "204"},
          {"HTTP/1.1 304 Not Modified\r\nContent-Length: 20\r\n\r\n", "304"},
          {lengths("2", "hi") + lengths("2", "no"), "200 hi"}});
}

TEST_F(OddAnswers, HeadersAreLinesWithAName) {
  expect({{"HTTP/1.1 200 OK\nContent-Length: 2\n\nhi", "200 hi"},
          {ok("X: \xff\xfe\r\nContent-Length: 2\r\n", "hi"), "200 hi"},
          {ok("X: a\r\n b\r\nContent-Length: 2\r\n", "hi"), "200 hi"},
          {ok("nonsense\r\nContent-Length: 2\r\n", "hi"), NOT_UNDERSTOOD},
          {ok(std::string("X: a\0b\r\n", 8) + "Content-Length: 2\r\n", "hi"), NOT_UNDERSTOOD},
          {"HTTP/1.1 200 OK\rContent-Length: 2\r\rhi", LOST}});
}

TEST_F(OddAnswers, ALineHasItsLimit) {
  expect({{ok("X: " + std::string(90'000, 'x') + "\r\nContent-Length: 2\r\n", "hi"), "200 hi"},
          {ok("X: " + std::string(120'000, 'x') + "\r\nContent-Length: 2\r\n", "hi"), TOO_LARGE}});
}

}  // namespace
}  // namespace notewick
