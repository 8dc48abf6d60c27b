#include "tools/local-service/certificates.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/freed.h"

namespace notewick::service {
namespace {

constexpr long DAY = 24L * 60 * 60;
constexpr int VALID_DAYS = 825;  // the most that every client accepts of a private authority

using Key = std::unique_ptr<EVP_PKEY, Freed<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Freed<X509_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Freed<X509_EXTENSION_free>>;
using File = std::unique_ptr<FILE, Freed<fclose>>;
using Extensions = std::vector<std::pair<int, const char*>>;

void require(bool done, const std::string& step) {
  if (!done) throw std::runtime_error("certificates: " + step + " failed");
}

Key newKey() {
  Key key(EVP_EC_gen("P-256"));
  require(key != nullptr, "making a key");
  return key;
}

void extend(X509* certificate, X509* issuer, const Extensions& extensions) {
  X509V3_CTX context;
  X509V3_set_ctx_nodb(&context);
  X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
  for (const auto& [kind, value] : extensions) {
    const Extension extension(X509V3_EXT_conf_nid(nullptr, &context, kind, value));
    require(extension && X509_add_ext(certificate, extension.get(), -1) == 1, "an extension");
  }
}

/// issuer null: by itself.
Certificate make(const char* name, EVP_PKEY* key, X509* issuer, EVP_PKEY* issuersKey,
                 const Extensions& extensions) {
  Certificate made(X509_new());
  auto* const by = issuer ? issuer : made.get();
  std::uint64_t serial = 0;
  require(RAND_bytes(reinterpret_cast<unsigned char*>(&serial), sizeof serial) == 1, "a number");
  X509_set_version(made.get(), X509_VERSION_3);
  ASN1_INTEGER_set_uint64(X509_get_serialNumber(made.get()), serial);
  X509_gmtime_adj(X509_getm_notBefore(made.get()), -DAY);
  X509_gmtime_adj(X509_getm_notAfter(made.get()), (VALID_DAYS - 1) * DAY);
  X509_NAME_add_entry_by_txt(X509_get_subject_name(made.get()), "CN", MBSTRING_UTF8,
                             reinterpret_cast<const unsigned char*>(name), -1, -1, 0);
  X509_set_issuer_name(made.get(), X509_get_subject_name(by));
  X509_set_pubkey(made.get(), key);
  extend(made.get(), by, extensions);
  require(X509_sign(made.get(), issuersKey, EVP_sha256()) != 0, "signing");
  return made;
}

template <class Write>
void save(const std::filesystem::path& path, Write write) {
  const File file(fopen(path.c_str(), "we"));
  require(file && write(file.get()) == 1 && fflush(file.get()) == 0, "writing " + path.string());
}

/// The authority is written last: where it stands, the others stand too.
bool lastsAnotherDay(const std::filesystem::path& authority) {
  const File file(fopen(authority.c_str(), "re"));
  const Certificate read(file ? PEM_read_X509(file.get(), nullptr, nullptr, nullptr) : nullptr);
  std::time_t tomorrow = std::time(nullptr) + DAY;
  return read && X509_cmp_time(X509_get0_notAfter(read.get()), &tomorrow) > 0;
}

void makeAll(const CertificateFiles& files) {
  std::filesystem::remove(files.authority);
  const auto authorityKey = newKey(), key = newKey();
  const auto authority =
      make("VELK local service authority", authorityKey.get(), nullptr, authorityKey.get(),
           {{NID_basic_constraints, "critical,CA:TRUE,pathlen:0"},
            {NID_key_usage, "critical,keyCertSign,cRLSign"},
            {NID_subject_key_identifier, "hash"}});
  const auto certificate = make("localhost", key.get(), authority.get(), authorityKey.get(),
                                {{NID_basic_constraints, "critical,CA:FALSE"},
                                 {NID_key_usage, "critical,digitalSignature"},
                                 {NID_ext_key_usage, "serverAuth"},
                                 {NID_subject_alt_name, "DNS:localhost,IP:127.0.0.1"},
                                 {NID_subject_key_identifier, "hash"},
                                 {NID_authority_key_identifier, "keyid:always"}});
  save(files.key, [&](FILE* file) {
    return PEM_write_PrivateKey(file, key.get(), nullptr, nullptr, 0, nullptr, nullptr);
  });
  save(files.certificate, [&](FILE* file) { return PEM_write_X509(file, certificate.get()); });
  save(files.authority, [&](FILE* file) { return PEM_write_X509(file, authority.get()); });
}

}  // namespace

CertificateFiles ensureCertificates(const std::filesystem::path& folder) {
  CertificateFiles files{folder / "ca.pem", folder / "server.pem", folder / "server.key"};
  std::filesystem::create_directories(folder);
  if (!lastsAnotherDay(files.authority)) makeAll(files);
  return files;
}

}  // namespace notewick::service
