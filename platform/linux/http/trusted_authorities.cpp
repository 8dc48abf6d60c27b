#include "platform/linux/http/trusted_authorities.h"

#include <openssl/err.h>
#include <openssl/x509.h>

#include <ctime>
#include <filesystem>

namespace notewick {
namespace {

/// Where a store keeps a pointer to its owner.
int ownerSlot() {
  static const int slot = X509_STORE_get_ex_new_index(0, nullptr, nullptr, nullptr, nullptr);
  return slot;
}

std::optional<std::chrono::sys_seconds> endOf(const X509& certificate) {
  std::tm end{};
  if (ASN1_TIME_to_tm(X509_get0_notAfter(&certificate), &end) != 1) return std::nullopt;
  return std::chrono::sys_seconds(std::chrono::seconds(timegm(&end)));
}

}  // namespace

void TrustedAuthorities::applyTo(SSL_CTX* context) {
  if (!store_) store_ = load(userFile_);
  X509_STORE_set_ex_data(store_.get(), ownerSlot(), this);
  X509_STORE_set_verify_cb(store_.get(), &noteEnd);
  SSL_CTX_set1_cert_store(context, store_.get());
}

// Called for each step of a judgement; the certificate is the server's own at each of them.
int TrustedAuthorities::noteEnd(int isGood, X509_STORE_CTX* judgement) {
  X509_STORE* const store = X509_STORE_CTX_get0_store(judgement);
  auto* const self = static_cast<TrustedAuthorities*>(X509_STORE_get_ex_data(store, ownerSlot()));
  if (const X509* const certificate = X509_STORE_CTX_get0_cert(judgement)) {
    self->end_ = endOf(*certificate);
  }
  return isGood;
}

TrustedAuthorities::Store TrustedAuthorities::load(const std::string& userFile) {
  Store store(X509_STORE_new());
  X509_STORE_load_path(store.get(), X509_get_default_cert_dir());
  std::error_code missing;
  // Opening a pipe would wait for its other end, and reading a device might never end.
  if (std::filesystem::is_regular_file(userFile, missing)) {
    X509_STORE_load_file(store.get(), userFile.c_str());
  }
  ERR_clear_error();
  return store;
}

}  // namespace notewick
