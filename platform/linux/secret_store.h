#pragma once

#include <QDBusObjectPath>
#include <QList>
#include <functional>
#include <memory>
#include <vector>

#include "platform/linux/secret_service.h"
#include "platform/secret_store.h"

namespace notewick {

class SecretServiceWait;
class SecretUnlock;

/// Secrets in the user's Secret Service: GNOME Keyring, KWallet, KeePassXC and others.
///
/// Each of `load`, `save` and `remove` takes at most `secretServicePatience`. A service that does
/// not answer by then (it hangs, is slow to start right after login, or has no room for the call)
/// counts as locked, and is not waited for again before it has answered: `unlock` waits for that
/// without blocking. A service
/// that is not running is started once in the life of the program, or KWallet, which is not known
/// to the bus as such a service; when that fails there is none.
///
/// `save` says `locked` also when the user has no collection for secrets yet; `unlock` then lets
/// the service ask for the password of a new one, but only then. In a locked collection that does
/// not hold the secret, `load` says `absent`.
class SecretServiceStore : public SecretStore {
 public:
  SecretServiceStore();
  ~SecretServiceStore() override;

  [[nodiscard]] SecretState state(const SecretKey& key) override;
  [[nodiscard]] SecretLookup load(const SecretKey& key) override;
  SecretWrite save(const SecretKey& key, const std::string& secret) override;
  SecretWrite remove(const SecretKey& key) override;
  void unlock(std::function<void(bool opened)> completion) override;
  bool watch(std::function<void()> changed) override;

 private:
  SecretWrite trySave(const SecretKey& key, const std::string& secret);
  [[nodiscard]] SecretServiceAnswer<void> reach(const SecretServiceConversation& service);
  [[nodiscard]] SecretServiceAnswer<SecretItems> find(const SecretServiceConversation& service,
                                                      const SecretKey& key);
  void noteFailure(SecretServiceFailure failure, const SecretKey& key);
  void waitEnded();
  void askToUnlock();
  void unlockEnded(bool opened);

  bool startTried_ = false;
  std::unique_ptr<SecretServiceWait> wait_;  ///< since a question went unanswered
  QList<QDBusObjectPath> lockedItems_;       ///< those that the last search found
  bool saveWaits_ = false;                   ///< the last `save` said `locked`
  std::unique_ptr<SecretUnlock> unlock_;
  std::vector<std::function<void(bool)>> unlockCompletions_;
};

}  // namespace notewick
