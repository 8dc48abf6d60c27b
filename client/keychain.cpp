#include "client/keychain.h"

#include <utility>

#include "app/constants.h"

namespace notewick {
namespace {

SecretKey refreshTokenKey() {
  return {std::string(KEYCHAIN_SERVICE), std::string(KEYCHAIN_ACCOUNT)};
}

}  // namespace

std::shared_ptr<Keychain> Keychain::create(SecretStore& store) {
  const std::shared_ptr<Keychain> keychain(new Keychain(store));
  keychain->storeReportsChanges_ = store.watch([weak = std::weak_ptr(keychain)] {
    if (const auto self = weak.lock()) self->storeChanged();
  });
  return keychain;
}

// --- What the store holds ------------------------------------------------------------------------

void Keychain::keychainSave(const std::string& token) {
  waiting_ = Waiting::save;
  waitingToken_.emplace(token);
  write();
}

void Keychain::keychainDelete() {
  waiting_ = Waiting::removal;
  waitingToken_.reset();
  write();
}

void Keychain::write() {
  if (!waitsForLater(writeWhatWaits())) nothingWaits();
}

bool Keychain::waitsForLater(SecretWrite written) const {
  if (written == SecretWrite::noStore) return waiting_ == Waiting::save;
  return written == SecretWrite::locked;
}

std::optional<std::string> Keychain::keychainLoad() {
  if (waiting_ == Waiting::save) return waitingToken_;
  if (waiting_ == Waiting::removal) return std::nullopt;
  return token();
}

bool Keychain::holdsToken() {
  if (waiting_ != Waiting::nothing) return waiting_ == Waiting::save;
  if (refused_) return token().has_value();
  return state() == SecretState::found || state_ == SecretState::locked;
}

bool Keychain::isLocked() {
  if (waiting_ != Waiting::nothing || refused_ || token()) return false;
  return state_ == SecretState::locked;
}

bool Keychain::wantsUnlock() {
  if (waiting_ == Waiting::nothing) return isLocked();
  return !refused_ && !hasNoStore();
}

SecretState Keychain::state() {
  if (state_ && storeReportsChanges_) return *state_;
  const SecretState now = store_.state(refreshTokenKey());
  remember(now, now == SecretState::found ? std::move(token_) : std::nullopt);
  return now;
}

std::optional<std::string> Keychain::token() {
  if (state() == SecretState::found && !token_) {
    SecretLookup lookup = store_.load(refreshTokenKey());
    const bool found = lookup.state == SecretState::found;
    remember(lookup.state, found ? std::optional(std::move(lookup.secret)) : std::nullopt);
  }
  return token_;
}

void Keychain::remember(SecretState state, std::optional<std::string> token) {
  state_ = state;
  token_ = std::move(token);
  hasSeenToken_ = hasSeenToken_ || state == SecretState::found;
}

void Keychain::forget() {
  state_.reset();
  token_.reset();
}

// --- A locked store ------------------------------------------------------------------------------

void Keychain::requestUnlock() {
  if (question_ != Question::none) return;
  question_ = Question::open;
  store_.unlock([weakSelf = weak_from_this()](bool opened) {
    if (const auto self = weakSelf.lock()) self->unlockAnswered(opened);
  });
}

void Keychain::setUnlockObserver(std::function<void(bool opened)> answered) {
  answered_ = std::move(answered);
}

void Keychain::unlockAnswered(bool opened) {
  const bool wasMoot = std::exchange(question_, Question::none) == Question::moot && !isShut();
  forget();
  const bool isOpen = isOpenNow() || opened;
  if (wasMoot) return;
  refused_ = !isOpen;
  if (answered_) answered_(isOpen);
}

void Keychain::storeChanged() {
  const bool wasShut = isShut();
  // A store that hung and turns out to hold no token is reported, except while a question is open
  // (it gets its own answer), after a refusal, and where a token was seen (somebody took it away).
  const bool isUnknown =
      state_ == SecretState::locked && question_ == Question::none && !refused_ && !hasSeenToken_;
  forget();
  if (!wasShut) return;
  if (!isOpenNow() && !(isUnknown && state_ == SecretState::absent)) return;
  refused_ = false;
  if (question_ == Question::open) question_ = Question::moot;
  if (answered_) answered_(true);
}

bool Keychain::isShut() const {
  return question_ == Question::open || refused_ || waiting_ != Waiting::nothing ||
         (state_ && state_ != SecretState::found);
}

bool Keychain::isOpenNow() {
  if (waiting_ == Waiting::nothing) return token().has_value();
  return writeWhatWaits() == SecretWrite::done;
}

SecretWrite Keychain::writeWhatWaits() {
  const bool saves = waitingToken_.has_value();
  const SecretWrite written = waitingToken_ ? store_.save(refreshTokenKey(), *waitingToken_)
                                            : store_.remove(refreshTokenKey());
  if (written == SecretWrite::done) {
    remember(saves ? SecretState::found : SecretState::absent, std::move(waitingToken_));
    nothingWaits();
  } else {
    forget();
  }
  return written;
}

void Keychain::nothingWaits() {
  waiting_ = Waiting::nothing;
  waitingToken_.reset();
}

}  // namespace notewick
