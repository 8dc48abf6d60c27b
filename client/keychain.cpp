#include "client/keychain.h"

#include <utility>

#include "app/constants.h"

namespace notewick {
namespace {

SecretKey refreshTokenKey() {
  return {std::string(KEYCHAIN_SERVICE), std::string(KEYCHAIN_ACCOUNT)};
}

}  // namespace

void Keychain::keychainSave(const std::string& token) {
  const bool locked = store_.save(refreshTokenKey(), token) == SecretWrite::locked;
  waiting_ = locked ? Waiting::save : Waiting::nothing;
  waitingToken_ = locked ? token : std::string();
}

std::optional<std::string> Keychain::keychainLoad() const {
  if (waiting_ == Waiting::save) return waitingToken_;
  if (waiting_ == Waiting::removal) return std::nullopt;
  const SecretLookup lookup = store_.load(refreshTokenKey());
  if (lookup.state != SecretState::found) return std::nullopt;
  return lookup.secret;
}

void Keychain::keychainDelete() {
  const bool locked = store_.remove(refreshTokenKey()) == SecretWrite::locked;
  waiting_ = locked ? Waiting::removal : Waiting::nothing;
  waitingToken_.clear();
}

bool Keychain::isLocked() const {
  return waiting_ == Waiting::nothing && !refused_ &&
         store_.load(refreshTokenKey()).state == SecretState::locked;
}

bool Keychain::wantsUnlock() const {
  return isLocked() || (waiting_ != Waiting::nothing && !refused_);
}

void Keychain::requestUnlock(std::function<void(bool opened)> answered) {
  if (asking_) return;
  asking_ = true;
  store_.unlock([weakSelf = weak_from_this(), answered = std::move(answered)](bool opened) {
    const auto self = weakSelf.lock();
    if (!self) return;
    self->unlockAnswered(opened);
    answered(opened);
  });
}

void Keychain::unlockAnswered(bool opened) {
  asking_ = false;
  refused_ = !opened;
  if (opened) writeWhatWaits();
}

void Keychain::writeWhatWaits() {
  switch (std::exchange(waiting_, Waiting::nothing)) {
    case Waiting::nothing:
      break;
    case Waiting::save:
      keychainSave(std::exchange(waitingToken_, std::string()));
      break;
    case Waiting::removal:
      keychainDelete();
      break;
  }
}

}  // namespace notewick
