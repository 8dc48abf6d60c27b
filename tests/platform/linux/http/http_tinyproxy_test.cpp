// A proxy as people run one: tinyproxy, as a program of its own.
#include <csignal>
#include <fstream>

#include "tests/support/certificate_authority.h"
#include "tests/support/child_process.h"
#include "tests/support/http_session_fixture.h"
#include "tests/support/raw_server.h"
#include "tests/support/tls_server.h"

namespace notewick {
namespace {

int freePort() {
  const RawServer server(RawServer::answering(""));
  return server.port();
}

/// tinyproxy on the loopback, which finds service.test there.
class TinyProxy {
 public:
  explicit TinyProxy(const std::string& option = "") {
    const std::string home = LinuxSession::current().home();
    std::ofstream(home + "/hosts") << "127.0.0.1 service.test\n";
    std::ofstream(home + "/tinyproxy.conf")
        << "Port " << port_ << "\nListen 127.0.0.1\nAllow 127.0.0.1\nTimeout 10\n"
        << "LogLevel Info\n"
        << option << "\n";
    process_ = std::make_unique<ChildProcess>(std::vector<std::string>{
        "env", "LD_PRELOAD=libnss_wrapper.so", "NSS_WRAPPER_HOSTS=" + home + "/hosts", "tinyproxy",
        "-d", "-c", home + "/tinyproxy.conf"});
    for (std::string line; line.find("Accepting connections") == std::string::npos;) {
      line = process_->readLine();
      if (line.empty()) throw std::runtime_error("tinyproxy did not start");
    }
  }

  [[nodiscard]] std::string address(const std::string& user = "") const {
    return "http://" + user + "127.0.0.1:" + std::to_string(port_);
  }

 private:
  int port_ = freePort();
  std::unique_ptr<ChildProcess> process_;
};

class TinyProxyTest : public CurlHttpSessionTest {
 protected:
  TinyProxyTest() {
    const std::string file = LinuxSession::current().home() + "/authority.pem";
    authority_.writeTo(file);
    qputenv("SSL_CERT_FILE", QByteArray::fromStdString(file));
    session_ = std::make_unique<CurlHttpSession>(HttpSessionConfiguration{5});
  }
  ~TinyProxyTest() override {
    qunsetenv("SSL_CERT_FILE");
    qunsetenv("https_proxy");
  }

  std::string through(const std::string& proxy) {
    qputenv("https_proxy", QByteArray::fromStdString(proxy));
    return outcome(get(service_.url("service.test")));
  }

  CertificateAuthority authority_;
  TlsServer service_{authority_.issue("DNS:service.test")};
};

TEST_F(TinyProxyTest, ReachesTheService) {
  const TinyProxy proxy;
  EXPECT_EQ(through(proxy.address()), "200 secret answer");
}

TEST_F(TinyProxyTest, AsksForItsPassword) {
  const TinyProxy proxy("BasicAuth ann secret");
  EXPECT_EQ(through(proxy.address("ann:secret@")), "200 secret answer");
  EXPECT_EQ(through(proxy.address()), "The proxy asks for a user name and a password.");
  EXPECT_EQ(through(proxy.address("ann:wrong@")), "The proxy refused the connection.");
}

TEST_F(TinyProxyTest, RefusesAPortThatItDoesNotAllow) {
  const TinyProxy proxy("ConnectPort 443");
  EXPECT_EQ(through(proxy.address()), "The proxy refused the connection.");
}

}  // namespace
}  // namespace notewick
