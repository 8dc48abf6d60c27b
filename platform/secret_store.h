#pragma once

#include <functional>
#include <string>

namespace notewick {

/// Names one secret.
struct SecretKey {
  std::string service;
  std::string account;
};

enum class SecretState {
  found,
  absent,   ///< no such secret
  locked,   ///< it is there, in a store the user has not opened; or the store does not answer yet
  noStore,  ///< this system has no secret store
};

struct SecretLookup {
  SecretState state;
  std::string secret;  ///< UTF-8; empty unless found
};

enum class SecretWrite { done, locked, failed, noStore };

/// The system's store for passwords and tokens. Main thread. `state`, `load`, `save` and `remove`
/// are synchronous, bounded in time, and never show a prompt; only `unlock` asks the user.
class SecretStore {
 public:
  virtual ~SecretStore() = default;

  /// Whether the secret is there, without fetching it.
  [[nodiscard]] virtual SecretState state(const SecretKey& key) = 0;

  /// A secret that is not valid UTF-8 counts as absent.
  [[nodiscard]] virtual SecretLookup load(const SecretKey& key) = 0;

  /// Stores `secret` under `key`, replacing the one there; there is never more than one.
  virtual SecretWrite save(const SecretKey& key, const std::string& secret) = 0;

  /// `done` also when there was nothing to remove.
  virtual SecretWrite remove(const SecretKey& key) = 0;

  /// Asks the user to open the locked store, without blocking, and never takes the question back.
  /// `completion` is called once, in a later turn: true when the store is open, false when the
  /// user dismissed the question or the store could not be opened.
  virtual void unlock(std::function<void(bool opened)> completion) = 0;

  /// Has `changed` called, in a later turn, whenever an earlier answer may no longer be true: an
  /// item or its collection was written, removed, locked or opened, whoever did it, or the store
  /// came, went, or answers again. It replaces the one given before. Returns whether the store
  /// reports such changes; where it does not, `changed` is never called, and whoever remembers an
  /// answer has to look again each time.
  virtual bool watch(std::function<void()> changed) = 0;
};

}  // namespace notewick
