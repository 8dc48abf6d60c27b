#pragma once

#include <memory>

#include "platform/main_loop.h"
#include "platform/secret_store.h"

namespace notewick {

/// Generic-password items in the user's keychain, with no attributes but service and account.
///
/// The system asks by itself, for as long as the user takes, when a keychain is locked or when an
/// item was made by a program with another signature. Such questions are switched off for `state`,
/// `load`, `save` and `remove`, which then say "locked", and on for `unlock` alone. While `unlock`
/// waits, on a thread of its own, the keychain is left alone and everything is "locked".
class KeychainSecretStore final : public SecretStore {
 public:
  explicit KeychainSecretStore(MainLoop& mainLoop) : mainLoop_(mainLoop) {}

  /// Looks for the item without its data, which even a locked keychain allows, and then at the
  /// keychain. An item of another signature counts as found; only `load` meets the difference.
  [[nodiscard]] SecretState state(const SecretKey& key) override;
  [[nodiscard]] SecretLookup load(const SecretKey& key) override;
  SecretWrite save(const SecretKey& key, const std::string& secret) override;
  SecretWrite remove(const SecretKey& key) override;
  void unlock(std::function<void(bool opened)> completion) override;
  /// Changes made by others are not reported.
  bool watch(std::function<void()> /*changed*/) override { return false; }

 private:
  [[nodiscard]] SecretWrite outcome(const SecretKey& key, int status);

  MainLoop& mainLoop_;
  SecretKey refused_;  ///< the item that was last found locked
  std::shared_ptr<bool> asking_ = std::make_shared<bool>(false);
};

}  // namespace notewick
