#include "platform/linux/http/trusted_authorities.h"

#include <openssl/err.h>
#include <openssl/x509.h>

namespace notewick {

void TrustedAuthorities::applyTo(SSL_CTX* context) {
  if (!store_) store_ = load(userFile_);
  SSL_CTX_set1_cert_store(context, store_.get());
}

TrustedAuthorities::Store TrustedAuthorities::load(const std::string& userFile) {
  Store store(X509_STORE_new());
  X509_STORE_load_path(store.get(), X509_get_default_cert_dir());
  if (!userFile.empty()) X509_STORE_load_file(store.get(), userFile.c_str());
  ERR_clear_error();
  return store;
}

}  // namespace notewick
