#include "tests/support/fake_secret_store.h"

#include <gtest/gtest.h>

namespace notewick {
namespace {

const std::pair<std::string, std::string> REFRESH_TOKEN{"tools.velk.notewick", "refresh-token"};

}  // namespace

SecretState FakeSecretStore::state(const SecretKey& key) {
  ++looks;
  if (missing) return SecretState::noStore;
  if (!secrets_.contains({key.service, key.account})) return SecretState::absent;
  return locked ? SecretState::locked : SecretState::found;
}

SecretLookup FakeSecretStore::load(const SecretKey& key) {
  ++looks;
  ++fetches;
  const auto secret = secrets_.find({key.service, key.account});
  if (missing) return {SecretState::noStore, ""};
  if (secret == secrets_.end()) return {SecretState::absent, ""};
  if (locked) return {SecretState::locked, ""};
  return {SecretState::found, secret->second};
}

SecretWrite FakeSecretStore::save(const SecretKey& key, const std::string& secret) {
  writes.push_back("save " + secret);
  if (missing) return SecretWrite::noStore;
  if (failWrites) return SecretWrite::failed;
  if (locked) return SecretWrite::locked;
  secrets_[{key.service, key.account}] = secret;
  report();
  return SecretWrite::done;
}

SecretWrite FakeSecretStore::remove(const SecretKey& key) {
  writes.push_back("remove");
  if (missing) return SecretWrite::noStore;
  if (failWrites) return SecretWrite::failed;
  if (locked) return SecretWrite::locked;
  secrets_.erase({key.service, key.account});
  report();
  return SecretWrite::done;
}

void FakeSecretStore::unlock(std::function<void(bool opened)> completion) {
  ++unlockRequests;
  questions_.push_back(std::move(completion));
}

bool FakeSecretStore::watch(std::function<void()> changed) {
  if (reportsChanges) changed_ = std::move(changed);
  return reportsChanges;
}

void FakeSecretStore::report() {
  if (changed_) loop_.post(changed_);
}

void FakeSecretStore::othersOpen() {
  locked = false;
  report();
  loop_.runPosted();
}

void FakeSecretStore::othersLock() {
  locked = true;
  report();
  loop_.runPosted();
}

void FakeSecretStore::comes() {
  missing = false;
  report();
  loop_.runPosted();
}

void FakeSecretStore::othersWrite(const std::string& token) {
  setRefreshToken(token);
  report();
  loop_.runPosted();
}

void FakeSecretStore::othersRemove() {
  secrets_.erase(REFRESH_TOKEN);
  report();
  loop_.runPosted();
}

void FakeSecretStore::userAnswers(bool open) {
  if (questions_.empty()) {
    ADD_FAILURE() << "nobody asked to open the secret store";
    return;
  }
  if (open) {
    locked = false;
    report();
  }
  loop_.post([completion = std::move(questions_.front()), open] { completion(open); });
  questions_.pop_front();
  loop_.runPosted();
}

std::optional<std::string> FakeSecretStore::refreshToken() const {
  const auto secret = secrets_.find(REFRESH_TOKEN);
  return secret == secrets_.end() ? std::nullopt : std::optional(secret->second);
}

void FakeSecretStore::setRefreshToken(const std::string& token) {
  secrets_[REFRESH_TOKEN] = token;
}

}  // namespace notewick
