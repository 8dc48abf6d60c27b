#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/secret_store.h"
#include "tests/support/fake_main_loop.h"

namespace notewick {

/// A store for secrets that a test can lock, break, look into, and answer for the user.
class FakeSecretStore : public SecretStore {
 public:
  explicit FakeSecretStore(FakeMainLoop& loop) : loop_(loop) {}

  [[nodiscard]] SecretState state(const SecretKey& key) override;
  [[nodiscard]] SecretLookup load(const SecretKey& key) override;
  SecretWrite save(const SecretKey& key, const std::string& secret) override;
  SecretWrite remove(const SecretKey& key) override;
  void unlock(std::function<void(bool opened)> completion) override;
  bool watch(std::function<void()> changed) override;

  /// The user answers the oldest question to open the store: yes opens it.
  void userAnswers(bool open);
  /// How many questions are waiting for the user.
  [[nodiscard]] std::size_t questions() const { return questions_.size(); }

  /// A store comes to a system that had none.
  void comes();

  /// Somebody else opens or locks the store, or writes or removes our secret.
  void othersOpen();
  void othersLock();
  void othersWrite(const std::string& token);
  void othersRemove();

  /// What the program keeps there, and how many secrets there are at all.
  [[nodiscard]] std::optional<std::string> refreshToken() const;
  void setRefreshToken(const std::string& token);
  [[nodiscard]] std::size_t size() const { return secrets_.size(); }

  bool locked = false;
  bool failWrites = false;
  bool missing = false;        ///< this system has no secret store
  bool reportsChanges = true;  ///< to whoever watches from then on
  std::size_t looks = 0;       ///< calls of `state` and `load`
  std::size_t fetches = 0;     ///< calls of `load` alone
  std::size_t unlockRequests = 0;
  std::vector<std::string> writes;  ///< "save <secret>" and "remove", also those that failed

 private:
  using Key = std::pair<std::string, std::string>;

  void report();

  FakeMainLoop& loop_;
  std::function<void()> changed_;
  std::map<Key, std::string> secrets_;
  std::deque<std::function<void(bool)>> questions_;
};

}  // namespace notewick
