#include "tools/local-service/certificates.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>
#include <sys/stat.h>

#include <memory>
#include <stdexcept>

namespace notewick::service {
namespace {

constexpr long DAY = 24L * 60 * 60;
constexpr int VALID_DAYS = 825;  // the most that every client accepts of a private authority

template <auto FREE>
struct Freed {
  template <class T>
  void operator()(T* object) const {
    FREE(object);
  }
};
using Key = std::unique_ptr<EVP_PKEY, Freed<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Freed<X509_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Freed<X509_EXTENSION_free>>;
using File = std::unique_ptr<FILE, Freed<fclose>>;

void require(bool done, const char* step) {
  if (!done) throw std::runtime_error(std::string("certificates: ") + step + " failed");
}

Key newKey() {
  Key key(EVP_EC_gen("P-256"));
  require(key != nullptr, "making a key");
  return key;
}

void setSerial(X509* certificate) {
  unsigned char bytes[8];
  require(RAND_bytes(bytes, sizeof bytes) == 1, "making a serial number");
  std::uint64_t serial = 0;
  for (const auto byte : bytes) serial = serial << 8 | byte;
  require(ASN1_INTEGER_set_uint64(X509_get_serialNumber(certificate), serial >> 1 | 1) == 1,
          "setting the serial number");
}

void extend(X509* certificate, X509* issuer, int kind, const char* value) {
  X509V3_CTX context;
  X509V3_set_ctx_nodb(&context);
  X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
  const Extension extension(X509V3_EXT_conf_nid(nullptr, &context, kind, value));
  require(extension && X509_add_ext(certificate, extension.get(), -1) == 1, "adding an extension");
}

/// Without extensions and signature; issuer null means by itself.
Certificate blank(const char* name, EVP_PKEY* key, X509* issuer) {
  Certificate made(X509_new());
  require(made && X509_set_version(made.get(), X509_VERSION_3) == 1, "making a certificate");
  setSerial(made.get());
  X509_gmtime_adj(X509_getm_notBefore(made.get()), -DAY);
  X509_gmtime_adj(X509_getm_notAfter(made.get()), (VALID_DAYS - 1) * DAY);
  X509_NAME_add_entry_by_txt(X509_get_subject_name(made.get()), "CN", MBSTRING_UTF8,
                             reinterpret_cast<const unsigned char*>(name), -1, -1, 0);
  auto* const by = issuer ? issuer : made.get();
  require(X509_set_issuer_name(made.get(), X509_get_subject_name(by)) == 1 &&
              X509_set_pubkey(made.get(), key) == 1,
          "filling a certificate");
  return made;
}

Certificate makeAuthority(EVP_PKEY* key) {
  auto made = blank("VELK local service authority", key, nullptr);
  extend(made.get(), made.get(), NID_basic_constraints, "critical,CA:TRUE,pathlen:0");
  extend(made.get(), made.get(), NID_key_usage, "critical,keyCertSign,cRLSign");
  extend(made.get(), made.get(), NID_subject_key_identifier, "hash");
  require(X509_sign(made.get(), key, EVP_sha256()) != 0, "signing the authority");
  return made;
}

Certificate makeServer(EVP_PKEY* key, X509* authority, EVP_PKEY* authorityKey) {
  auto made = blank("localhost", key, authority);
  extend(made.get(), authority, NID_basic_constraints, "critical,CA:FALSE");
  extend(made.get(), authority, NID_key_usage, "critical,digitalSignature");
  extend(made.get(), authority, NID_ext_key_usage, "serverAuth");
  extend(made.get(), authority, NID_subject_alt_name, "DNS:localhost,IP:127.0.0.1,IP:::1");
  extend(made.get(), authority, NID_subject_key_identifier, "hash");
  extend(made.get(), authority, NID_authority_key_identifier, "keyid:always");
  require(X509_sign(made.get(), authorityKey, EVP_sha256()) != 0, "signing the certificate");
  return made;
}

template <class Write>
void save(const std::filesystem::path& path, mode_t mode, Write write) {
  std::filesystem::remove(path);
  const File file(fopen(path.c_str(), "wx"));
  require(file && fchmod(fileno(file.get()), mode) == 0 && write(file.get()) == 1 &&
              fflush(file.get()) == 0,
          ("writing " + path.string()).c_str());
}

template <class T, class Read>
T load(const std::filesystem::path& path, Read read) {
  const File file(fopen(path.c_str(), "re"));
  return T(file ? read(file.get(), nullptr, nullptr, nullptr) : nullptr);
}

bool fitTogether(const CertificateFiles& files) {
  const auto authority = load<Certificate>(files.authority, PEM_read_X509);
  const auto certificate = load<Certificate>(files.certificate, PEM_read_X509);
  const auto key = load<Key>(files.key, PEM_read_PrivateKey);
  if (!authority || !certificate || !key) return false;
  std::time_t tomorrow = std::time(nullptr) + DAY;
  return X509_check_private_key(certificate.get(), key.get()) == 1 &&
         X509_verify(certificate.get(), X509_get0_pubkey(authority.get())) == 1 &&
         X509_cmp_time(X509_get0_notAfter(certificate.get()), &tomorrow) > 0 &&
         X509_cmp_time(X509_get0_notAfter(authority.get()), &tomorrow) > 0;
}

}  // namespace

CertificateFiles ensureCertificates(const std::filesystem::path& folder) {
  CertificateFiles files{folder / "ca.pem", folder / "server.pem", folder / "server.key"};
  std::filesystem::create_directories(folder);
  if (fitTogether(files)) return files;

  const auto authorityKey = newKey();
  const auto authority = makeAuthority(authorityKey.get());
  const auto key = newKey();
  const auto certificate = makeServer(key.get(), authority.get(), authorityKey.get());
  save(files.key, S_IRUSR | S_IWUSR, [&](FILE* file) {
    return PEM_write_PrivateKey(file, key.get(), nullptr, nullptr, 0, nullptr, nullptr);
  });
  constexpr mode_t READABLE = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;
  save(files.certificate, READABLE,
       [&](FILE* file) { return PEM_write_X509(file, certificate.get()); });
  save(files.authority, READABLE,
       [&](FILE* file) { return PEM_write_X509(file, authority.get()); });
  return files;
}

}  // namespace notewick::service
