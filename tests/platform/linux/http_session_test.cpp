#include "platform/linux/http_session.h"

#include <httplib.h>

#include <thread>

#include "tests/support/http_session_fixture.h"
#include "tests/support/raw_server.h"

namespace notewick {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
using namespace std::chrono_literals;

/// What a server does that answers each request with the request's own body.
void echo(const RawConnection& connection) {
  const std::string request = connection.readRequest();
  connection.write(answer("200 OK", request.substr(request.find("\r\n\r\n") + 4)));
}

/// A server that keeps each request and answers it with the same bytes.
struct KeepingServer {
  explicit KeepingServer(const std::string& bytes = answer("200 OK"))
      : server([this, bytes](const RawConnection& connection) {
          log.add(connection.readRequest());
          connection.write(bytes);
        }) {}

  [[nodiscard]] std::string request(std::size_t number) const { return log.entries().at(number); }
  [[nodiscard]] std::string hostHeader() const { return "Host: " + server.url("").substr(7); }

  SharedLog log;
  RawServer server;
};

[[nodiscard]] std::vector<std::string> sortedHeaders(const std::string& request) {
  std::vector<std::string> lines;
  std::size_t start = request.find("\r\n") + 2;
  for (std::size_t end = request.find("\r\n", start); end != start;
       end = request.find("\r\n", start)) {
    lines.push_back(request.substr(start, end - start));
    start = end + 2;
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

TEST_F(CurlHttpSessionTest, EveryStatusIsAnAnswerWithItsBody) {
  for (const std::string status : {"200", "299", "400", "404", "599"}) {
    const RawServer server(RawServer::answering(answer(status + " Told", "told")));
    EXPECT_EQ(outcome(get(server.url())), status + " told");
  }
}

TEST_F(CurlHttpSessionTest, TheBodyIsWhatCameBehindTheHead) {
  const std::string packed = "\x1f\x8b\x08 no real archive";
  for (const auto& [bytes, told] :
       {std::pair(answer("200 OK"), std::string("200")),
        std::pair(std::string("HTTP/1.0 200 OK\r\n\r\nall of it"), std::string("200 all of it")),
        std::pair(answer("200 OK", packed, "Content-Encoding: gzip\r\n"), "200 " + packed)}) {
    const RawServer server(RawServer::answering(bytes));
    EXPECT_EQ(outcome(get(server.url())), told);
  }
}

TEST_F(CurlHttpSessionTest, BodiesTravelByteForByteInBothDirections) {
  const RawServer server(echo);
  std::string body(1'000'000, '\0');
  for (std::size_t index = 0; index < body.size(); ++index) {
    body[index] = static_cast<char>(index * 7 + index / 256);
  }
  EXPECT_EQ(outcome(post(server.url(), body)), "200 " + body);
}

TEST_F(CurlHttpSessionTest, AGetSendsTheGivenHeadersAndOnlyTheStacksOwnBesides) {
  const KeepingServer kept;
  HttpRequest request = get(kept.server.url("/api/desktop/participants?x=%20y"));
  request.headers = {{"Content-Type", "application/json"},
                     {"User-Agent", "velk-notewick/1.0 (macOS)"},
                     {"Authorization", "Bearer a.b-c"}};
  EXPECT_EQ(outcome(request), "200");
  EXPECT_THAT(kept.request(0), StartsWith("GET /api/desktop/participants?x=%20y HTTP/1.1\r\n"));
  EXPECT_THAT(sortedHeaders(kept.request(0)),
              ElementsAre("Authorization: Bearer a.b-c", "Content-Type: application/json",
                          kept.hostHeader(), "User-Agent: velk-notewick/1.0 (macOS)"));
}

TEST_F(CurlHttpSessionTest, APostSendsItsLengthAndItsBodyBesides) {
  const KeepingServer kept;
  EXPECT_EQ(outcome(post(kept.server.url("/login"), R"({"a":1})")), "200");
  EXPECT_THAT(kept.request(0), StartsWith("POST /login HTTP/1.1\r\n"));
  EXPECT_THAT(kept.request(0), testing::EndsWith("\r\n\r\n{\"a\":1}"));
  EXPECT_THAT(sortedHeaders(kept.request(0)),
              ElementsAre("Content-Length: 7", "Content-Type: application/json", kept.hostHeader(),
                          "User-Agent: test/1.0"));
}

TEST_F(CurlHttpSessionTest, ARequestWithoutHeadersHasNoneOfTheStacksOwn) {
  const KeepingServer kept;
  const std::string large(2'000'000, 'x');
  EXPECT_EQ(outcome({"GET", kept.server.url(), {}, std::nullopt, 5}), "200");
  EXPECT_EQ(outcome({"POST", kept.server.url(), {}, large, 5}), "200");
  EXPECT_THAT(sortedHeaders(kept.request(0)), ElementsAre(kept.hostHeader()));
  EXPECT_THAT(sortedHeaders(kept.request(1)),
              ElementsAre("Content-Length: 2000000", kept.hostHeader()));
}

TEST_F(CurlHttpSessionTest, AnAddressGoesOutAsItIsWrittenAndWithoutItsFragment) {
  const KeepingServer kept;
  EXPECT_EQ(outcome(get(kept.server.url("//a/../b/./c%2Fd?q=../x#part"))), "200");
  EXPECT_THAT(kept.request(0), StartsWith("GET //a/../b/./c%2Fd?q=../x HTTP/1.1\r\n"));
}

TEST_F(CurlHttpSessionTest, AHeaderThatWouldBeReadAsTwoIsNotSent) {
  const RawServer server(RawServer::answering(answer("200 OK")));
  for (const std::string& value :
       {std::string("a\r\nX: b"), std::string("a\nX: b"), std::string("a\0b", 3)}) {
    HttpRequest request = get(server.url());
    request.headers.emplace_back("Authorization", value);
    EXPECT_EQ(outcome(request), "The request is not valid.");
  }
  EXPECT_EQ(server.connections(), 0);
}

TEST_F(CurlHttpSessionTest, RedirectsAreAnswersAndReachNoOtherHost) {
  for (const std::string status : {"301 Moved", "303 See Other", "308 Permanent"}) {
    const RawServer other(RawServer::answering(answer("200 OK", "stolen")));
    const RawServer server(
        RawServer::answering(answer(status, "moved", "Location: " + other.url("/x") + "\r\n")));
    HttpRequest request = get(server.url());
    request.headers.emplace_back("Authorization", "Bearer secret");
    EXPECT_EQ(outcome(request), status.substr(0, 3) + " moved");
    EXPECT_EQ(outcome(post(server.url(), "{}")), status.substr(0, 3) + " moved");
    EXPECT_EQ(other.connections(), 0) << status;
  }
}

TEST_F(CurlHttpSessionTest, ChallengesAreAnswersAndNeverMet) {
  for (const std::string challenge : {"Basic realm=\"x\"", "Bearer", "NTLM", "Negotiate",
                                      "Digest realm=\"x\", nonce=\"y\", qop=\"auth\""}) {
    const KeepingServer kept(
        answer("401 Unauthorized", R"({"error":"no"})", "WWW-Authenticate: " + challenge + "\r\n"));
    std::string withUser = kept.server.url();
    withUser.insert(7, "user:password@");
    EXPECT_EQ(outcome(get(withUser)), R"(401 {"error":"no"})");
    EXPECT_EQ(outcome(post(withUser, "{}")), R"(401 {"error":"no"})");
    EXPECT_THAT(kept.log.entries(), AllOf(SizeIs(2), Each(Not(HasSubstr("Authorization")))))
        << challenge;
  }
}

TEST_F(CurlHttpSessionTest, NothingIsKeptFromOneAnswerToTheNext) {
  const KeepingServer kept(
      answer("200 OK", "x", "Set-Cookie: id=1; Path=/\r\nCache-Control: max-age=3600\r\n"));
  EXPECT_EQ(outcome(get(kept.server.url())), "200 x");
  EXPECT_EQ(outcome(get(kept.server.url())), "200 x");
  EXPECT_EQ(kept.server.connections(), 2);
  EXPECT_THAT(kept.request(1), Not(HasSubstr("Cookie")));
}

// The server closes each connection without saying so before.
TEST_F(CurlHttpSessionTest, AStormOfRequestsIsAnsweredOnceEach) {
  const RawServer server(echo);
  std::vector<int> answered(300, 0);
  for (std::size_t number = 0; number < answered.size(); ++number) {
    const std::string body = "body of " + std::to_string(number);
    session_->send(post(server.url(), body, 20), [&, number, body](const Result& result) {
      EXPECT_EQ(described(result), "200 " + body);
      ++answered[number];
    });
  }
  EXPECT_TRUE(waitUntil([&] { return std::count(answered.begin(), answered.end(), 1) == 300; }));
  EXPECT_EQ(outcome(post(server.url(), "the end")), "200 the end");
  EXPECT_THAT(answered, Each(1));
  EXPECT_EQ(server.connections(), 301);
}

TEST_F(CurlHttpSessionTest, EveryRequestStartsAtOnce) {
  constexpr int MANY = 20;
  std::atomic<int> together = 0;
  httplib::Server server;
  server.new_task_queue = [] { return new httplib::ThreadPool(MANY); };
  server.Get("/", [&](const httplib::Request&, httplib::Response&) {
    ++together;
    while (together < MANY) std::this_thread::yield();
  });
  socket_t listener = INVALID_SOCKET;
  server.set_socket_options([&](socket_t made) { listener = made; });
  const int port = server.bind_to_any_port("127.0.0.1");
  listen(listener, MANY);  // so that all may connect at the same moment
  std::thread thread([&] { server.listen_after_bind(); });
  for (int count = 0; count < MANY; ++count) {
    send(get("http://127.0.0.1:" + std::to_string(port) + "/", 20));
  }
  EXPECT_TRUE(waitUntil([this] { return outcomes_.size() == MANY; }));
  EXPECT_EQ(together, MANY);
  server.stop();
  thread.join();
}

TEST_F(CurlHttpSessionTest, DestroyingTheSessionDropsItsCompletions) {
  const RawServer server(echo);
  send(get(server.url()));
  send(post(server.url(), "x"));
  send(get("not an address"));
  session_ = std::make_unique<CurlHttpSession>(HttpSessionConfiguration{5});
  EXPECT_EQ(outcome(post(server.url(), "told")), "200 told") << "the only outcome";
}

TEST_F(CurlHttpSessionTest, ACompletionMayDestroyTheSession) {
  const RawServer server(echo);
  session_->send(post(server.url(), "told"), [this](const Result& result) {
    session_.reset();
    outcomes_.push_back(described(result));
  });
  EXPECT_TRUE(waitUntil([this] { return !outcomes_.empty(); }));
  catchUp();
  EXPECT_THAT(outcomes_, ElementsAre("200 told"));
}

TEST_F(CurlHttpSessionTest, ACompletionMaySendTheNextRequest) {
  const RawServer server(echo);
  session_->send(post(server.url(), "first"), [&](const Result& result) {
    outcomes_.push_back(described(result));
    send(post(server.url(), "second"));
  });
  EXPECT_TRUE(waitUntil([this] { return outcomes_.size() == 2; }));
  EXPECT_THAT(outcomes_, ElementsAre("200 first", "200 second"));
}

}  // namespace
}  // namespace notewick
