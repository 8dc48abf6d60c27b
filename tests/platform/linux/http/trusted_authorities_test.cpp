#include "platform/linux/http/trusted_authorities.h"

#include <gtest/gtest.h>
#include <openssl/pem.h>

#include <filesystem>

#include "platform/freed.h"
#include "tests/support/certificate_authority.h"
#include "tests/support/linux_session.h"

namespace notewick {
namespace {

/// Whether connections that trust these authorities take the certificate, at whatever time.
bool trusts(TrustedAuthorities& authorities, X509* certificate) {
  const std::unique_ptr<SSL_CTX, Freed<SSL_CTX_free>> context(SSL_CTX_new(TLS_client_method()));
  authorities.applyTo(context.get());
  X509_STORE_CTX* const check = X509_STORE_CTX_new();
  X509_STORE_CTX_init(check, SSL_CTX_get_cert_store(context.get()), certificate, nullptr);
  X509_VERIFY_PARAM_set_flags(X509_STORE_CTX_get0_param(check), X509_V_FLAG_NO_CHECK_TIME);
  const bool trusted = X509_verify_cert(check) == 1;
  X509_STORE_CTX_free(check);
  return trusted;
}

Certificate anAuthorityOfTheSystem() {
  for (const auto& entry : std::filesystem::directory_iterator("/etc/ssl/certs")) {
    if (entry.path().extension() != ".pem") continue;
    FILE* const file = std::fopen(entry.path().c_str(), "re");
    if (file == nullptr) continue;
    Certificate certificate(PEM_read_X509(file, nullptr, nullptr, nullptr));
    std::fclose(file);
    if (certificate) return certificate;
  }
  return nullptr;
}

TEST(TrustedAuthoritiesTest, TheUsersAuthorityIsTrustedBesidesTheSystems) {
  const CertificateAuthority users;
  const std::string file = LinuxSession::current().home() + "/users.pem";
  users.writeTo(file);
  const Identity server = users.issue("DNS:velk.example");
  const Certificate system = anAuthorityOfTheSystem();
  ASSERT_NE(system, nullptr);

  TrustedAuthorities both(file);
  EXPECT_TRUE(trusts(both, server.certificate.get()));
  EXPECT_TRUE(trusts(both, system.get()));
  TrustedAuthorities systemOnly("");
  EXPECT_FALSE(trusts(systemOnly, server.certificate.get()));
  EXPECT_TRUE(trusts(systemOnly, system.get()));
}

}  // namespace
}  // namespace notewick
