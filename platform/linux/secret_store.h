#pragma once

#include <QDBusObjectPath>
#include <QElapsedTimer>
#include <QList>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "platform/linux/secrets/secret_service.h"
#include "platform/secret_store.h"

namespace notewick {

class SecretServiceWait;
class SecretServiceWatch;
class SecretUnlock;

/// Secrets in the user's Secret Service: GNOME Keyring, KWallet, KeePassXC and others.
///
/// Each of `state`, `load`, `save` and `remove` takes at most `patience`. A service
/// that does not answer by then (it hangs, is slow to start right after login, or has no room for
/// the call) counts as locked, and is not waited for again before it has answered: `unlock` waits
/// for that without blocking.
///
/// A service that is not running at the first question is started, or KWallet, which is not known
/// to the bus as such a service. That is tried once in the life of the program; where it fails
/// there is no store, and every answer is `noStore`. A service that was there
/// and has gone (it crashed, is being replaced, or the user logs out) counts as locked instead,
/// because the secret is still where it was; only `unlock` starts it again.
///
/// That a service answers again is reported at once the first time. Where that turns out wrong time
/// after time, it is reported ever more rarely, up to once a minute: each new attempt may keep the
/// main thread waiting.
///
/// `save` says `locked` also when the user has no collection for secrets yet; `unlock` then lets
/// the service ask for the password of a new one, but only then. In a locked collection that does
/// not hold the secret, `load` says `absent`.
class SecretServiceStore : public SecretStore {
 public:
  explicit SecretServiceStore(std::chrono::milliseconds patience = SECRET_SERVICE_PATIENCE);
  ~SecretServiceStore() override;

  [[nodiscard]] SecretState state(const SecretKey& key) override;
  [[nodiscard]] SecretLookup load(const SecretKey& key) override;
  SecretWrite save(const SecretKey& key, const std::string& secret) override;
  SecretWrite remove(const SecretKey& key) override;
  void unlock(std::function<void(bool opened)> completion) override;
  bool watch(std::function<void()> changed) override;

 private:
  SecretWrite trySave(const SecretKey& key, const std::string& secret);
  [[nodiscard]] SecretState stateAfter(SecretServiceFailure failure, const SecretKey& key);
  SecretWrite outcomeAfter(SecretServiceFailure failure, const SecretKey& key);
  [[nodiscard]] bool opensLater(SecretServiceFailure failure) const;
  [[nodiscard]] SecretServiceAnswer<void> reach(const SecretServiceConversation& service);
  [[nodiscard]] SecretServiceAnswer<SecretItems> find(const SecretServiceConversation& service,
                                                      const SecretKey& key);
  void noteFailure(SecretServiceFailure failure, const SecretKey& key);
  void waitEnded();
  void reportAnswer();
  void askToUnlock();
  void unlockEnded(bool opened);

  const std::chrono::milliseconds patience_;
  bool wasThere_ = false;  ///< a service has been running
  bool startTried_ = false;
  std::unique_ptr<SecretServiceWait> wait_;  ///< since a question went unanswered
  std::chrono::seconds pause_{0};            ///< between the end of a wait and its report
  QElapsedTimer sinceWait_;                  ///< since the last one ended
  QList<QDBusObjectPath> lockedItems_;       ///< those that the last search found
  bool saveWaits_ = false;                   ///< the last `save` said `locked`
  std::unique_ptr<SecretUnlock> unlock_;
  std::vector<std::function<void(bool)>> unlockCompletions_;
  std::unique_ptr<SecretServiceWatch> watch_;
};

}  // namespace notewick
