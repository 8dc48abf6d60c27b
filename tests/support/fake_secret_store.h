#pragma once

#include <gtest/gtest.h>

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

  [[nodiscard]] SecretState state(const SecretKey& key) override {
    ++looks;
    if (missing) return SecretState::noStore;
    if (hangs) return SecretState::locked;
    if (!secrets_.contains(pathOf(key))) return SecretState::absent;
    return locked ? SecretState::locked : SecretState::found;
  }
  [[nodiscard]] SecretLookup load(const SecretKey& key) override {
    ++fetches;
    const SecretState found = state(key);
    return {found, found == SecretState::found ? secrets_.at(pathOf(key)) : ""};
  }
  SecretWrite save(const SecretKey& key, const std::string& secret) override {
    writes.push_back("save " + secret);
    return write([&] { secrets_[pathOf(key)] = secret; });
  }
  SecretWrite remove(const SecretKey& key) override {
    writes.push_back("remove");
    return write([&] { secrets_.erase(pathOf(key)); });
  }
  void unlock(std::function<void(bool opened)> completion) override {
    ++unlockRequests;
    questions_.push_back(std::move(completion));
  }
  bool watch(std::function<void()> changed) override {
    if (reportsChanges) changed_ = std::move(changed);
    return reportsChanges;
  }

  /// The user answers the oldest question to open the store: yes opens it.
  void userAnswers(bool open) {
    ASSERT_FALSE(questions_.empty()) << "nobody asked to open the secret store";
    const auto completion = std::move(questions_.front());
    questions_.pop_front();
    if (open) {
      locked = false;
      report();
    }
    loop_.post([completion, open] { completion(open); });
    loop_.runPosted();
  }

  /// A store comes to a system that had none.
  void comes() {
    othersDo([this] { missing = false; });
  }

  /// Somebody else opens or locks the store, or writes or removes our secret.
  void othersOpen() {
    othersDo([this] { locked = false; });
  }
  void othersLock() {
    othersDo([this] { locked = true; });
  }
  /// A store that hung answers again.
  void answersAgain() {
    othersDo([this] { hangs = false; });
  }
  void othersWrite(const std::string& token) {
    othersDo([&] { setRefreshToken(token); });
  }
  void othersRemove() {
    othersDo([this] { secrets_.erase(REFRESH_TOKEN); });
  }

  /// What the program keeps there, and how many secrets there are at all.
  [[nodiscard]] std::optional<std::string> refreshToken() const {
    const auto secret = secrets_.find(REFRESH_TOKEN);
    return secret == secrets_.end() ? std::nullopt : std::optional(secret->second);
  }
  void setRefreshToken(const std::string& token) { secrets_[REFRESH_TOKEN] = token; }
  [[nodiscard]] std::size_t size() const { return secrets_.size(); }

  bool locked = false;
  bool hangs = false;  ///< and nobody knows what it holds
  bool failWrites = false;
  bool missing = false;        ///< this system has no secret store
  bool reportsChanges = true;  ///< to whoever watches from then on
  std::size_t looks = 0;       ///< calls of `state` and `load`
  std::size_t fetches = 0;     ///< calls of `load` alone
  std::size_t unlockRequests = 0;
  std::vector<std::string> writes;  ///< "save <secret>" and "remove", also those that failed

 private:
  inline static const std::string REFRESH_TOKEN = "tools.velk.notewick/refresh-token";

  static std::string pathOf(const SecretKey& key) { return key.service + "/" + key.account; }

  SecretWrite write(const std::function<void()>& change) {
    if (missing) return SecretWrite::noStore;
    if (failWrites) return SecretWrite::failed;
    if (locked) return SecretWrite::locked;
    change();
    report();
    return SecretWrite::done;
  }
  void othersDo(const std::function<void()>& change) {
    change();
    report();
    loop_.runPosted();
  }
  void report() {
    if (changed_) loop_.post(changed_);
  }

  FakeMainLoop& loop_;
  std::function<void()> changed_;
  std::map<std::string, std::string> secrets_;
  std::deque<std::function<void(bool)>> questions_;
};

}  // namespace notewick
