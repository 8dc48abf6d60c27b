#pragma once

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <memory>
#include <string>

#include "platform/freed.h"

namespace notewick {

using PrivateKey = std::unique_ptr<EVP_PKEY, Freed<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Freed<X509_free>>;

/// A certificate with its key, and when it is good, in days from now.
struct Identity {
  PrivateKey key;
  Certificate certificate;
};
struct Validity {
  int from = -1;
  int until = 1;
};

/// An authority of a test's own, which signs whatever the test wants.
class CertificateAuthority {
 public:
  explicit CertificateAuthority(const std::string& name = "Test authority");

  /// Writes the authority's certificate to a file, as SSL_CERT_FILE names one.
  void writeTo(const std::string& file) const;

  /// A server's certificate for names such as "DNS:localhost,IP:127.0.0.1".
  [[nodiscard]] Identity issue(const std::string& names, Validity validity = {}) const;

 private:
  Identity self_;
};

}  // namespace notewick
