#pragma once

#include <filesystem>

namespace notewick::service {

/// What TLS needs: clients trust authority (SSL_CERT_FILE), the service shows certificate.
struct CertificateFiles {
  std::filesystem::path authority;
  std::filesystem::path certificate;
  std::filesystem::path key;
};

/// The files ca.pem, server.pem and server.key in the folder, which is made when missing. What is
/// there is kept while it lasts another day; otherwise all three are made anew: an authority, and
/// signed by it a certificate for localhost and 127.0.0.1. The authority's own key signs this once
/// and is then forgotten, so that nobody can sign anything else that the clients would trust.
/// Throws std::runtime_error.
[[nodiscard]] CertificateFiles ensureCertificates(const std::filesystem::path& folder);

}  // namespace notewick::service
