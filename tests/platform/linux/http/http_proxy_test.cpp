// The way through a proxy. The service has a name that only the proxy can find.
#include <QThreadPool>
#include <fstream>
#include <semaphore>

#include "tests/support/certificate_authority.h"
#include "tests/support/child_process.h"
#include "tests/support/http_session_fixture.h"
#include "tests/support/raw_server.h"
#include "tests/support/tls_server.h"

namespace notewick {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr const char* ESTABLISHED = "HTTP/1.1 200 Connection established\r\n\r\n";
constexpr const char* REFUSED = "The proxy refused the connection.";
constexpr const char* ASKS_FOR_PASSWORD = "The proxy asks for a user name and a password.";
constexpr auto PROXY_VARIABLES = {"https_proxy", "http_proxy", "HTTP_PROXY", "ALL_PROXY"};

class HttpProxyTest : public CurlHttpSessionTest {
 protected:
  HttpProxyTest() {
    const std::string file = LinuxSession::current().home() + "/authority.pem";
    authority_.writeTo(file);
    qputenv("SSL_CERT_FILE", QByteArray::fromStdString(file));
    useDesktop([](const QNetworkProxyQuery&) { return QList<QNetworkProxy>(); });
  }
  ~HttpProxyTest() override {
    qunsetenv("SSL_CERT_FILE");
    for (const char* name : PROXY_VARIABLES) qunsetenv(name);
  }

  void useDesktop(DesktopProxies::Ask ask) {
    session_ = std::make_unique<CurlHttpSession>(HttpSessionConfiguration{5}, std::move(ask));
  }

  static void useProxy(const std::string& address) {
    qputenv("https_proxy", QByteArray::fromStdString(address));
  }

  /// What a proxy does that lets every connection through to the service.
  [[nodiscard]] std::function<void(const RawConnection&)> tunnel() {
    return [this](const RawConnection& connection) {
      log_.add(connection.readRequest());
      connection.write(ESTABLISHED);
      connection.joinWith(service_.port());
    };
  }

  [[nodiscard]] HttpRequest authorised(double timeout = 5) const {
    HttpRequest request = get(service_.url("service.test"), timeout);
    request.headers.emplace_back("Authorization", "Bearer secret");
    return request;
  }

  /// What a request comes to whose proxy answers with these bytes.
  std::string behind(const std::string& bytes) {
    const RawServer proxy(RawServer::answering(bytes));
    useProxy(proxy.url());
    return outcome(authorised());
  }

  CertificateAuthority authority_;
  TlsServer service_{authority_.issue("DNS:service.test,DNS:localhost,IP:127.0.0.1")};
  SharedLog log_;
};

TEST_F(HttpProxyTest, AnHttpProxyMakesATunnelAndSeesItsPasswordButNoHeaderOfTheRequest) {
  const RawServer proxy(tunnel());
  useProxy(proxy.url());
  EXPECT_EQ(outcome(authorised()), "200 secret answer");
  ASSERT_EQ(log_.entries().size(), 1U);
  const std::string place = "service.test:" + std::to_string(service_.port());
  EXPECT_THAT(
      log_.entries().at(0),
      AllOf(testing::StartsWith("CONNECT " + place + " HTTP/1.1\r\nHost: " + place + "\r\n"),
            Not(HasSubstr("uthorization")), Not(HasSubstr("User-Agent"))));
  useProxy("http://ann:p%40ss@" + proxy.url().substr(7));
  EXPECT_EQ(outcome(authorised()), "200 secret answer");
  EXPECT_THAT(log_.entries().at(1), HasSubstr("\r\nProxy-Authorization: Basic YW5uOnBAc3M=\r\n"));
}

TEST_F(HttpProxyTest, TheDesktopsProxyIsUsedWhereTheEnvironmentNamesNone) {
  const RawServer proxy(tunnel());
  useDesktop([&](const QNetworkProxyQuery&) {
    return QList{
        QNetworkProxy(QNetworkProxy::HttpProxy, "127.0.0.1", static_cast<quint16>(proxy.port()))};
  });
  EXPECT_EQ(outcome(authorised()), "200 secret answer");
  EXPECT_EQ(proxy.connections(), 1);
}

TEST_F(HttpProxyTest, TheDesktopIsNotAskedForLoopbackNorWhereTheEnvironmentNamesOne) {
  const RawServer proxy(tunnel());
  const RawServer plain(RawServer::answering(answer("200 OK")));
  std::atomic<int> asked = 0;
  useDesktop([&](const QNetworkProxyQuery&) {
    ++asked;
    return QList<QNetworkProxy>();
  });
  EXPECT_EQ(outcome(get(service_.url("localhost"))), "200 secret answer");
  for (const char* name : PROXY_VARIABLES) qputenv(name, QByteArray::fromStdString(proxy.url()));
  EXPECT_EQ(outcome(get(service_.url("127.0.0.1"))), "200 secret answer");
  EXPECT_EQ(outcome(get(service_.url("localhost"))), "200 secret answer");
  EXPECT_EQ(outcome(get(plain.url())), "200");
  EXPECT_EQ(proxy.connections(), 0);
  EXPECT_EQ(outcome(authorised()), "200 secret answer");
  EXPECT_EQ(proxy.connections(), 1);
  EXPECT_EQ(asked, 0);
}

TEST_F(HttpProxyTest, ADesktopThatDoesNotTellItsProxiesCountsAsInactivity) {
  std::binary_semaphore end(0);
  useDesktop([&](const QNetworkProxyQuery&) {
    end.acquire();
    return QList<QNetworkProxy>();
  });
  EXPECT_EQ(outcome(authorised(0.2)), "The request timed out.");
  end.release();
  QThreadPool::globalInstance()->waitForDone();
  catchUp();
  EXPECT_EQ(service_.answered(), 0);
}

TEST_F(HttpProxyTest, AProxysRefusalIsNeverTheServicesAnswer) {
  EXPECT_EQ(behind(answer("403 Forbidden", R"({"error":"no"})")), REFUSED);
  EXPECT_EQ(behind(answer("502 Bad Gateway")), REFUSED);
  EXPECT_EQ(behind(answer("301 Moved", "", "Location: http://127.0.0.1/\r\n")), REFUSED);
  EXPECT_EQ(behind(answer("401 Unauthorized", "", "WWW-Authenticate: Basic realm=\"x\"\r\n")),
            REFUSED);
  EXPECT_EQ(behind("HTTP/1.1 503 Busy\r\n\r\n"), REFUSED);
}

TEST_F(HttpProxyTest, AProxyThatWantsAPasswordIsNotAskedTwice) {
  const std::string asks = answer("407 Proxy Authentication Required", "who?",
                                  "Proxy-Authenticate: Basic realm=\"x\"\r\n");
  const RawServer proxy(RawServer::answering(asks));
  useProxy(proxy.url());
  EXPECT_EQ(outcome(authorised()), ASKS_FOR_PASSWORD);
  useProxy("http://ann:wrong@" + proxy.url().substr(7));
  EXPECT_EQ(outcome(authorised()), ASKS_FOR_PASSWORD);
  EXPECT_EQ(proxy.connections(), 2);
}

TEST_F(HttpProxyTest, WhatIsNoProxysAnswerIsAnError) {
  EXPECT_EQ(behind("<html>Welcome to our network</html>\r\n"), NOT_UNDERSTOOD);
  EXPECT_EQ(behind("HTTP/1.1 101 Switching Protocols\r\n\r\n"), NOT_UNDERSTOOD);
  EXPECT_EQ(behind(answer("200 OK", "<html>Welcome</html>")), INSECURE);
  EXPECT_EQ(behind(""), LOST);
  EXPECT_EQ(behind("HTTP/1.1 200 Conn"), LOST);
  EXPECT_THAT(behind(ESTABLISHED), testing::AnyOf(LOST, INSECURE)) << "a tunnel that is cut";
}

TEST_F(HttpProxyTest, AnEndlessAnswerOfAProxyIsCut) {
  const RawServer proxy([&](const RawConnection& connection) {
    (void)connection.readRequest();
    connection.write("HTTP/1.1 200 OK\r\n");
    (void)connection.writeWithoutEnd("X: " + std::string(1000, 'x') + "\r\n", 100'000'000);
  });
  useProxy(proxy.url());
  EXPECT_EQ(outcome(authorised()), TOO_LARGE);
}

TEST_F(HttpProxyTest, AProxyThatIsNotThereIsATransportError) {
  std::string gone;
  {
    const RawServer proxy(RawServer::answering(""));
    gone = proxy.url();
  }
  useProxy(gone);
  EXPECT_EQ(outcome(authorised()), "The connection was refused.");
  useProxy("ftp://127.0.0.1:1");
  EXPECT_EQ(outcome(authorised()), "The proxy's address is not valid.");
}

/// A SOCKS5 proxy that lets every connection through to the service, or refuses it.
class SocksProxyTest : public HttpProxyTest {
 protected:
  void serve(const RawConnection& connection) {
    const std::string offer = connection.read(2);
    const std::string methods = connection.read(static_cast<std::size_t>(offer[1]));
    const bool asks = methods.find('\2') != std::string::npos;
    connection.write(asks ? "\5\2" : std::string("\5\0", 2));
    if (asks) {
      const std::string user = readText(connection, 1);
      log_.add(user + "/" + readText(connection, 0));
      connection.write(std::string("\1\0", 2));
    }
    const std::string request = connection.read(3);
    log_.add(readText(connection, 1));
    (void)connection.read(2);
    connection.write(std::string("\5") + reply_.load() + std::string("\0\1\0\0\0\0\0\0", 8));
    if (reply_ == 0) connection.joinWith(service_.port());
  }

  /// A text that its length goes before, behind as many bytes.
  static std::string readText(const RawConnection& connection, std::size_t behind) {
    (void)connection.read(behind);
    const std::string length = connection.read(1);
    return length.empty() ? "" : connection.read(static_cast<std::size_t>(length[0]));
  }

  std::string through(const std::string& user = "") {
    useProxy("socks5://" + user + proxy_.url("").substr(7));
    return outcome(authorised());
  }

  std::atomic<char> reply_ = 0;
  const RawServer proxy_{[this](const RawConnection& connection) { serve(connection); }};
};

TEST_F(SocksProxyTest, FindsTheService) {
  EXPECT_EQ(through(), "200 secret answer");
  EXPECT_THAT(log_.entries(), ElementsAre("service.test"));
}

TEST_F(SocksProxyTest, GetsThePasswordOfItsAddress) {
  EXPECT_EQ(through("ann:secret@"), "200 secret answer");
  EXPECT_THAT(log_.entries(), ElementsAre("ann/secret", "service.test"));
}

TEST_F(SocksProxyTest, ItsRefusalIsATransportError) {
  reply_ = 2;
  EXPECT_EQ(through(), REFUSED);
}

/// A proxy as people run one: tinyproxy on the loopback, which finds service.test there.
class TinyProxyTest : public HttpProxyTest {
 protected:
  void startProxy(const std::string& option) {
    const std::string home = LinuxSession::current().home();
    std::ofstream(home + "/hosts") << "127.0.0.1 service.test\n";
    std::ofstream(home + "/tinyproxy.conf")
        << "Port " << port_ << "\nListen 127.0.0.1\nAllow 127.0.0.1\nTimeout 10\n"
        << "LogLevel Info\n"
        << option << "\n";
    process_.reset();  // which has the port
    process_ = std::make_unique<ChildProcess>(std::vector<std::string>{
        "env", "LD_PRELOAD=libnss_wrapper.so", "NSS_WRAPPER_HOSTS=" + home + "/hosts", "tinyproxy",
        "-d", "-c", home + "/tinyproxy.conf"});
    for (std::string line; line.find("Accepting connections") == std::string::npos;) {
      line = process_->readLine();
      ASSERT_FALSE(line.empty()) << "tinyproxy did not start";
    }
  }

  std::string through(const std::string& user = "") {
    useProxy("http://" + user + "127.0.0.1:" + std::to_string(port_));
    return outcome(authorised());
  }

  const int port_ = RawServer(RawServer::answering("")).port();  // free again
  std::unique_ptr<ChildProcess> process_;
};

TEST_F(TinyProxyTest, ReachesTheServiceWithItsPasswordAtAPortThatItAllows) {
  startProxy("BasicAuth ann secret");
  EXPECT_EQ(through("ann:secret@"), "200 secret answer");
  EXPECT_EQ(through(), ASKS_FOR_PASSWORD);
  EXPECT_EQ(through("ann:wrong@"), REFUSED);
  startProxy("ConnectPort 443");
  EXPECT_EQ(through(), REFUSED) << "a port that it does not allow";
}

}  // namespace
}  // namespace notewick
