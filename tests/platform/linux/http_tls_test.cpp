#include <gtest/gtest.h>
#include <httplib.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include "platform/linux/http_session.h"
#include "tests/support/linux_session.h"
#include "tests/support/raw_server.h"
#include "tools/local-service/certificates.h"

namespace notewick {
namespace {

namespace fs = std::filesystem;

/// A server with a certificate for localhost and 127.0.0.1, signed by an authority of its own.
class TlsServer {
 public:
  explicit TlsServer(const std::string& folder, const char* address = "127.0.0.1")
      : files_(service::ensureCertificates(LinuxSession::current().home() + "/" + folder)),
        server_(files_.certificate.c_str(), files_.key.c_str()),
        address_(address) {
    server_.Get("/", [](const httplib::Request&, httplib::Response& response) {
      response.set_content("secret answer", "text/plain");
    });
    port_ = server_.bind_to_any_port(address);
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running()) std::this_thread::yield();
  }
  TlsServer(const TlsServer&) = delete;
  TlsServer& operator=(const TlsServer&) = delete;
  ~TlsServer() {
    server_.stop();
    thread_.join();
  }

  [[nodiscard]] std::string authority() const { return files_.authority; }
  [[nodiscard]] std::string url(const std::string& host = "") const {
    return "https://" + (host.empty() ? address_ : host) + ":" + std::to_string(port_) + "/";
  }

 private:
  service::CertificateFiles files_;
  httplib::SSLServer server_;
  std::string address_;
  int port_;
  std::thread thread_;
};

class HttpTlsTest : public testing::Test {
 protected:
  ~HttpTlsTest() override { qunsetenv("SSL_CERT_FILE"); }

  static void userTrusts(const std::string& file) {
    qputenv("SSL_CERT_FILE", QByteArray::fromStdString(file));
  }

  static std::string outcome(const std::string& url) {
    QtHttpSession session({5});
    std::string outcome;
    session.send({"GET", url, {}, std::nullopt, 5}, [&](const auto& result) {
      outcome = result ? *result->body : result.error().description;
    });
    EXPECT_TRUE(waitUntil([&] { return !outcome.empty(); }));
    return outcome;
  }
};

constexpr const char* insecure = "A secure connection could not be made.";

TEST_F(HttpTlsTest, TheAuthorityThatTheUserNamesIsTrusted) {
  const TlsServer server("authority");
  userTrusts(server.authority());
  EXPECT_EQ(outcome(server.url()), "secret answer");
  EXPECT_EQ(outcome(server.url("localhost")), "secret answer");
}

TEST_F(HttpTlsTest, AnUnknownAuthorityIsRefused) {
  const TlsServer server("authority");
  EXPECT_EQ(outcome(server.url()), insecure);
}

TEST_F(HttpTlsTest, AnotherAuthorityIsRefused) {
  const TlsServer server("authority");
  const TlsServer other("other");
  userTrusts(other.authority());
  EXPECT_EQ(outcome(server.url()), insecure);
}

TEST_F(HttpTlsTest, ACertificateForAnotherHostIsRefused) {
  const TlsServer server("authority", "127.0.0.2");
  userTrusts(server.authority());
  EXPECT_EQ(outcome(server.url()), insecure);
}

TEST_F(HttpTlsTest, AServerWithoutTlsIsRefused) {
  const RawServer server([](const RawConnection& connection) {
    connection.write("HTTP/1.1 400 Bad Request\r\n\r\n");
    connection.waitForClose();
  });
  EXPECT_EQ(outcome("https" + server.url().substr(4)), insecure);
}

TEST_F(HttpTlsTest, AFileWithoutCertificatesTrustsNobodyMore) {
  const TlsServer server("authority");
  const std::string file = LinuxSession::current().home() + "/no-certificates";
  std::ofstream(file) << "hello";
  userTrusts(file);
  EXPECT_EQ(outcome(server.url()), insecure);
  userTrusts(file + ".missing");
  EXPECT_EQ(outcome(server.url()), insecure);
}

}  // namespace
}  // namespace notewick
