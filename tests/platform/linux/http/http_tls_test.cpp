// Whom a request trusts.
#include <sys/stat.h>

#include <fstream>

#include "tests/support/certificate_authority.h"
#include "tests/support/http_session_fixture.h"
#include "tests/support/raw_server.h"
#include "tests/support/tls_server.h"

namespace notewick {
namespace {

constexpr const char* NAMES = "DNS:localhost,IP:127.0.0.1";

class HttpTlsTest : public CurlHttpSessionTest {
 protected:
  HttpTlsTest() { authority_.writeTo(file_); }
  ~HttpTlsTest() override { qunsetenv("SSL_CERT_FILE"); }

  static void userTrusts(const std::string& file) {
    qputenv("SSL_CERT_FILE", QByteArray::fromStdString(file));
  }

  std::string answerAt(const std::string& url) {
    auto session = std::make_unique<CurlHttpSession>(HttpSessionConfiguration{5});
    curl_ = session.get();
    session_ = std::move(session);
    return outcome(get(url));
  }

  /// The end of the certificate that was seen last, in days from now.
  [[nodiscard]] std::optional<double> daysLeft() const {
    const auto end = curl_->certificateEnd();
    if (!end) return std::nullopt;
    return std::chrono::duration<double, std::ratio<86400>>(*end - std::chrono::system_clock::now())
        .count();
  }

  CertificateAuthority authority_;
  std::string file_ = LinuxSession::current().home() + "/authority.pem";
  CurlHttpSession* curl_ = nullptr;  ///< the session of the last answer
};

TEST_F(HttpTlsTest, TheEndOfTheServersCertificateIsKnownAlsoWhereItIsRefused) {
  const TlsServer good(authority_.issue(NAMES, {-1, 30}));
  const TlsServer expired(authority_.issue(NAMES, {-30, -3}));
  EXPECT_EQ(answerAt(good.url()), INSECURE);
  EXPECT_EQ(good.answered(), 0);
  EXPECT_NEAR(daysLeft().value(), 30, 0.1);
  userTrusts(file_);
  EXPECT_EQ(answerAt(good.url()), "200 secret answer");
  EXPECT_NEAR(daysLeft().value(), 30, 0.1);
  EXPECT_EQ(answerAt(expired.url()), INSECURE);
  EXPECT_NEAR(daysLeft().value(), -3, 0.1);
  EXPECT_EQ(answerAt("https://127.0.0.1:1"), "The connection was refused.");
  EXPECT_EQ(daysLeft(), std::nullopt);
}

TEST_F(HttpTlsTest, AServerThatWasJudgedIsNotJudgedAnewForEachConnection) {
  SSL_CTX* context = nullptr;
  const TlsServer server(authority_.issue(NAMES), [&](SSL_CTX& made) { context = &made; });
  userTrusts(file_);
  EXPECT_EQ(answerAt(server.url()), "200 secret answer");
  EXPECT_EQ(SSL_CTX_sess_hits(context), 0);
  EXPECT_EQ(outcome(get(server.url())), "200 secret answer");
  EXPECT_EQ(SSL_CTX_sess_hits(context), 1);
}

TEST_F(HttpTlsTest, WhomTheAuthorityDoesNotVouchForIsRefused) {
  const CertificateAuthority other("Another authority");
  const CertificateAuthority sameName;
  userTrusts(file_);
  for (const auto& [why, identity] :
       {std::pair("another authority", other.issue(NAMES)),
        std::pair("a pretender", sameName.issue(NAMES)),
        std::pair("another host", authority_.issue("DNS:velk.example,IP:127.0.0.2")),
        std::pair("too late", authority_.issue(NAMES, {-3, -1})),
        std::pair("too early", authority_.issue(NAMES, {1, 3}))}) {
    const TlsServer server(identity);
    EXPECT_EQ(answerAt(server.url()), INSECURE) << why;
    EXPECT_EQ(answerAt(server.url("localhost")), INSECURE) << why;
    EXPECT_EQ(server.answered(), 0) << why;
  }
}

TEST_F(HttpTlsTest, Version12IsTakenUnderEachNameAndOlderOnesAreRefusedAtOnce) {
  userTrusts(file_);
  for (const int version : {TLS1_VERSION, TLS1_1_VERSION, TLS1_2_VERSION}) {
    const TlsServer server(authority_.issue(NAMES), [version](SSL_CTX& context) {
      SSL_CTX_set_security_level(&context, 0);
      SSL_CTX_set_min_proto_version(&context, version);
      SSL_CTX_set_max_proto_version(&context, version);
    });
    const char* const expected = version == TLS1_2_VERSION ? "200 secret answer" : INSECURE;
    EXPECT_EQ(answerAt(server.url()), expected) << version;
    EXPECT_EQ(answerAt(server.url("localhost")), expected) << version;
  }
}

TEST_F(HttpTlsTest, AServerWithoutTlsIsRefused) {
  const RawServer server([](const RawConnection& connection) {
    connection.write("HTTP/1.1 400 Bad Request\r\n\r\n");
    connection.waitForClose();
  });
  EXPECT_EQ(answerAt("https" + server.url().substr(4)), INSECURE);
}

TEST_F(HttpTlsTest, AFileWithoutCertificatesTrustsNobodyMore) {
  const TlsServer server(authority_.issue(NAMES));
  const std::string file = LinuxSession::current().home() + "/no-certificates";
  std::ofstream(file) << "hello";
  userTrusts(file);
  EXPECT_EQ(answerAt(server.url()), INSECURE);
  userTrusts(file + ".missing");
  EXPECT_EQ(answerAt(server.url()), INSECURE);
  ASSERT_EQ(mkfifo((file + ".pipe").c_str(), 0600), 0);
  for (const std::string& endless : {file + ".pipe", std::string("/dev/zero")}) {
    userTrusts(endless);
    EXPECT_EQ(answerAt(server.url()), INSECURE);
  }
}

}  // namespace
}  // namespace notewick
