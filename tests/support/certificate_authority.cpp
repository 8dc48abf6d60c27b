#include "tests/support/certificate_authority.h"

#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <cstdio>
#include <stdexcept>

namespace notewick {
namespace {

constexpr long DAY = 24L * 60 * 60;

void require(bool done) {
  if (!done) throw std::runtime_error("a certificate could not be made");
}

void extend(X509* certificate, X509* issuer, int kind, const std::string& value) {
  X509V3_CTX context;
  X509V3_set_ctx_nodb(&context);
  X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
  X509_EXTENSION* const extension = X509V3_EXT_conf_nid(nullptr, &context, kind, value.c_str());
  require(extension != nullptr && X509_add_ext(certificate, extension, -1) == 1);
  X509_EXTENSION_free(extension);
}

/// Without extensions and signature.
Identity blank(const std::string& name, const X509* issuer, Validity validity) {
  static long serial = 0;
  Identity made{PrivateKey(EVP_EC_gen("P-256")), Certificate(X509_new())};
  X509* const certificate = made.certificate.get();
  require(made.key && certificate != nullptr);
  X509_set_version(certificate, X509_VERSION_3);
  ASN1_INTEGER_set(X509_get_serialNumber(certificate), ++serial);
  X509_gmtime_adj(X509_getm_notBefore(certificate), validity.from * DAY);
  X509_gmtime_adj(X509_getm_notAfter(certificate), validity.until * DAY);
  X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate), "CN", MBSTRING_UTF8,
                             reinterpret_cast<const unsigned char*>(name.c_str()), -1, -1, 0);
  X509_set_issuer_name(certificate,
                       X509_get_subject_name(issuer != nullptr ? issuer : certificate));
  X509_set_pubkey(certificate, made.key.get());
  return made;
}

}  // namespace

CertificateAuthority::CertificateAuthority(const std::string& name)
    : self_(blank(name, nullptr, {-1000, 1000})) {
  X509* const certificate = self_.certificate.get();
  extend(certificate, certificate, NID_basic_constraints, "critical,CA:TRUE");
  extend(certificate, certificate, NID_key_usage, "critical,keyCertSign");
  require(X509_sign(certificate, self_.key.get(), EVP_sha256()) != 0);
}

void CertificateAuthority::writeTo(const std::string& file) const {
  FILE* const output = std::fopen(file.c_str(), "we");
  require(output != nullptr && PEM_write_X509(output, self_.certificate.get()) == 1);
  std::fclose(output);
}

Identity CertificateAuthority::issue(const std::string& names, Validity validity) const {
  Identity made = blank("server", self_.certificate.get(), validity);
  extend(made.certificate.get(), self_.certificate.get(), NID_subject_alt_name, names);
  require(X509_sign(made.certificate.get(), self_.key.get(), EVP_sha256()) != 0);
  return made;
}

}  // namespace notewick
