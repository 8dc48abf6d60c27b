#include "tools/local-service/listener.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <future>
#include <stdexcept>
#include <thread>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

Answer echo(const Request& request) {
  return {.contentType = "text/plain",
          .body = request.method + " " + request.path + " " + request.body};
}

/// A connection to the port whose reads give up after some time.
int connected(int port, int patienceMilliseconds) {
  const int client = socket(AF_INET, SOCK_STREAM, 0);
  const timeval patience{.tv_sec = patienceMilliseconds / 1000,
                         .tv_usec = patienceMilliseconds % 1000 * 1000};
  setsockopt(client, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  EXPECT_EQ(connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  return client;
}

/// Everything until the end of the connection, or until a read gives up.
std::string receivedFrom(int client) {
  std::string received;
  char buffer[4096];
  for (ssize_t size = 0; (size = recv(client, buffer, sizeof buffer, 0)) > 0;) {
    received.append(buffer, static_cast<std::size_t>(size));
  }
  return received;
}

/// What comes back for bytes sent as they are, until the end or that long a silence.
std::string rawExchange(int port, const std::string& sent, int patienceMilliseconds) {
  const int client = connected(port, patienceMilliseconds);
  EXPECT_GE(send(client, sent.data(), sent.size(), 0), 0);
  auto received = receivedFrom(client);
  close(client);
  return received;
}

class ListenerTest : public testing::Test {
 protected:
  httplib::Client client() {
    return httplib::Client("http://127.0.0.1:" + std::to_string(listener.port()));
  }

  void expectAlive() {
    const auto answer = client().Get("/alive");
    ASSERT_EQ(statusOf(answer), 200);
    EXPECT_EQ(answer->body, "GET /alive ");
  }

  Listener listener{{}, echo};
};

TEST_F(ListenerTest, HandsOverEveryMethodWithItsBody) {
  EXPECT_EQ(client().Get("/a?b=c")->body, "GET /a ");
  EXPECT_EQ(client().Post("/a", "body", "text/plain")->body, "POST /a body");
  EXPECT_EQ(client().Put("/a", "body", "text/plain")->body, "PUT /a body");
  EXPECT_EQ(client().Patch("/a", "body", "text/plain")->body, "PATCH /a body");
  EXPECT_EQ(client().Delete("/a", "body", "text/plain")->body, "DELETE /a body");
  EXPECT_EQ(client().Options("/a")->body, "OPTIONS /a ");
  EXPECT_EQ(client().Post("/a", httplib::Headers{}, "", "")->body, "POST /a ");
}

TEST_F(ListenerTest, APostWithoutALengthHasNoBody) {
  EXPECT_NE(rawExchange(listener.port(), "POST /a HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n",
                        10'000)
                .find("POST /a "),
            std::string::npos);
}

TEST_F(ListenerTest, TakesABodyUpToTheLimitAndRefusesMore) {
  std::string body(Listener::BODY_LIMIT, 'x');
  EXPECT_EQ(statusOf(client().Post("/a", body, "text/plain")), 200);
  EXPECT_EQ(statusOf(client().Post("/a", body + "x", "text/plain")), 413);
  expectAlive();
}

TEST_F(ListenerTest, RefusesMoreThanTheLimitAlsoWithoutALength) {
  const std::string piece(1 << 16, 'x');
  std::size_t sent = 0;
  const auto result = client().Post(
      "/a",
      [&](std::size_t, httplib::DataSink& sink) {
        sent += piece.size();
        if (!sink.write(piece.data(), piece.size())) return false;
        if (sent > 2 * Listener::BODY_LIMIT) sink.done();
        return true;
      },
      "text/plain");
  EXPECT_NE(statusOf(result), 200);
  expectAlive();
}

TEST_F(ListenerTest, RefusesFormsOfSeveralParts) {
  const httplib::MultipartFormDataItems parts = {{"a", "b", "", ""}};
  EXPECT_EQ(statusOf(client().Post("/a", parts)), 415);
  expectAlive();
}

TEST_F(ListenerTest, RefusesPathsOfUncommonLength) {
  EXPECT_EQ(statusOf(client().Get("/" + std::string(2047, 'a'))), 200);
  EXPECT_EQ(statusOf(client().Get("/" + std::string(2048, 'a'))), 414);
  EXPECT_EQ(statusOf(client().Get("/" + std::string(8000, 'a'))), 414);
  EXPECT_EQ(statusOf(client().Get("/" + std::string(100'000, 'a'))), 414);
  expectAlive();
}

TEST_F(ListenerTest, SurvivesBytesThatAreNoHttp) {
  const std::string garbage = [] {
    std::string bytes;
    for (int at = 0; at < 5000; ++at) bytes += static_cast<char>((at * 7919) >> 3);
    return bytes;
  }();
  for (const auto& sent :
       {std::string("\r\n\r\n"), garbage, "GET " + garbage + "\r\n\r\n",
        std::string("\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03", 11),
        std::string("POST /a HTTP/1.1\r\nContent-Length: -1\r\nConnection: close\r\n\r\nx"),
        std::string("POST /a HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\nx\r\n"),
        std::string("POST /a HTTP/1.1\r\nContent-Encoding: gzip\r\nContent-Length: 3\r\n\r\nabc"),
        "GET /a HTTP/1.1\r\nRange: bytes=" + std::string(8000, '1') + "-\r\n\r\n",
        "GET /a HTTP/1.1\r\nX: " + std::string(100'000, 'a') + "\r\n\r\n"}) {
    rawExchange(listener.port(), sent, 100);
    expectAlive();
  }
}

TEST_F(ListenerTest, StopsAtOnceWithIdleConnectionsOpen) {
  auto idle = client();
  idle.set_keep_alive(true);
  ASSERT_EQ(statusOf(idle.Get("/a")), 200);
  const auto start = std::chrono::steady_clock::now();
  listener.stop();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
  EXPECT_EQ(statusOf(idle.Get("/a")), 0);
}

TEST(ListenerStopTest, DeliversTheAnswerBeingMadeAndEndsIdleConnections) {
  std::promise<void> asked, release;
  Listener listener({}, [&](const Request&) {
    asked.set_value();
    release.get_future().wait();
    return Answer{.body = "in the end"};
  });
  std::string received;
  std::thread asking([&, client = connected(listener.port(), 10'000)] {
    const std::string request = "GET /a HTTP/1.1\r\nHost: x\r\n\r\n";
    send(client, request.data(), request.size(), 0);
    received = receivedFrom(client);
    close(client);
  });
  asked.get_future().wait();
  const int idle = connected(listener.port(), 10'000);
  std::thread stopping([&] { listener.stop(); });
  EXPECT_EQ(receivedFrom(idle), "");  // the later connection, so the busy one has had its turn
  release.set_value();
  stopping.join();
  asking.join();
  close(idle);
  EXPECT_TRUE(received.ends_with("in the end")) << received;
}

TEST(ListenerAddressTest, RefusesEverythingButLoopback) {
  for (const auto* const host : {"0.0.0.0", "::", "", "192.168.1.1", "example.org", "127.0.0.2"}) {
    EXPECT_THROW(Listener({.host = host}, echo), std::runtime_error) << host;
  }
}

TEST(ListenerAddressTest, ServesTheSixthVersionsLoopbackToo) {
  const Listener listener({.host = "::1"}, echo);
  httplib::Client client("http://[::1]:" + std::to_string(listener.port()));
  EXPECT_EQ(statusOf(client.Get("/a")), 200);
}

TEST(ListenerAddressTest, RefusesAPortThatIsTaken) {
  const Listener listener({}, echo);
  EXPECT_THROW(Listener({.port = listener.port()}, echo), std::runtime_error);
}

TEST(ListenerFailureTest, AnExceptionIsAnAnswerOfItsOwn) {
  const Listener listener({}, [](const Request&) -> Answer { throw std::runtime_error("secret"); });
  httplib::Client client("http://127.0.0.1:" + std::to_string(listener.port()));
  const auto answer = client.Get("/a");
  ASSERT_EQ(statusOf(answer), 500);
  EXPECT_EQ(answer->body.find("secret"), std::string::npos);
}

class TlsListenerTest : public testing::Test {
 protected:
  httplib::Result ask(const std::string& host, const std::filesystem::path& authority) {
    httplib::Client client("https://" + host + ":" + std::to_string(listener.port()));
    client.set_ca_cert_path(authority.string());
    return client.Get("/a");
  }

  TemporaryFolder folder;
  CertificateFiles files = ensureCertificates(folder.path());
  Listener listener{{.tls = files}, echo};
};

TEST_F(TlsListenerTest, IsTrustedByWhoTrustsTheAuthority) {
  EXPECT_EQ(statusOf(ask("127.0.0.1", files.authority)), 200);
  EXPECT_EQ(statusOf(ask("localhost", files.authority)), 200);
}

TEST_F(TlsListenerTest, IsRefusedByWhoTrustsSomeoneElse) {
  TemporaryFolder elsewhere;
  const auto other = ensureCertificates(elsewhere.path());
  EXPECT_EQ(ask("localhost", other.authority).error(), httplib::Error::SSLServerVerification);
}

TEST_F(TlsListenerTest, IsRefusedByWhoTrustsTheSystemsAuthoritiesOnly) {
  httplib::Client client("https://localhost:" + std::to_string(listener.port()));
  EXPECT_EQ(client.Get("/a").error(), httplib::Error::SSLServerVerification);
}

TEST_F(TlsListenerTest, SpeaksNoPlainHttp) {
  httplib::Client client("http://127.0.0.1:" + std::to_string(listener.port()));
  EXPECT_EQ(statusOf(client.Get("/a")), 0);
  EXPECT_EQ(statusOf(ask("127.0.0.1", files.authority)), 200);
}

TEST(TlsListenerFailureTest, RefusesCertificatesThatCannotBeRead) {
  const TemporaryFolder folder;
  const CertificateFiles missing{folder.file("a"), folder.file("b"), folder.file("c")};
  EXPECT_THROW(Listener({.tls = missing}, echo), std::runtime_error);
}

}  // namespace
}  // namespace notewick::service
