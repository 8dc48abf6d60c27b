#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/secret_store.h"

namespace notewick {

/// The refresh token in the system's secret store, and what happens while that store is locked. A
/// locked store with our token in it is not "signed out": the user is asked to open it, and what
/// has to be written meanwhile waits in memory. A store that the user refused to open counts as
/// empty until the next command to sign in or out, or until somebody else opens it. Where there is
/// no store the token lives in memory, until it is deleted, the program ends, or a store comes.
///
/// What the store said, and the token that was read or written, are remembered until the store
/// reports a change; where it does not report changes, each look asks whether the token is still
/// there. Main thread; write failures are swallowed.
class Keychain : public std::enable_shared_from_this<Keychain> {
 public:
  /// The store must outlive the keychain.
  [[nodiscard]] static std::shared_ptr<Keychain> create(SecretStore& store);

  void keychainSave(const std::string& token);
  [[nodiscard]] std::optional<std::string> keychainLoad();
  void keychainDelete();

  /// Whether a token is there but out of reach until somebody opens the store.
  [[nodiscard]] bool isLocked();

  /// Whether there is a token, in reach or not. Does not fetch it.
  [[nodiscard]] bool holdsToken();

  /// Whether this system has no store at all: a sign-in lasts until the program ends.
  [[nodiscard]] bool hasNoStore() { return state() == SecretState::noStore; }

  /// Whether opening the store would help: the token is out of reach, or waits to be saved or to be
  /// removed. False once the user has refused, and where there is no store.
  [[nodiscard]] bool wantsUnlock();

  /// Asks the user to open the store, unless that question is on screen already.
  void requestUnlock();

  /// Has `answered` called in a later turn: with true when the store is open and what waited is
  /// written, with false when the user refused. The answer comes from the user, or from somebody
  /// else who has opened the store, or has started one that holds a token, or from a store that did
  /// not answer at the launch and turns out to hold none. A question that is still on screen then
  /// is answered to nobody, unless the store has been locked again.
  void setUnlockObserver(std::function<void(bool opened)> answered);

  /// Takes back that the user refused: from here on a locked store counts as locked again.
  void forgetRefusal() { refused_ = false; }

 private:
  enum class Waiting { nothing, save, removal };
  enum class Question {
    none,
    open,
    moot,  ///< on screen, but somebody else has opened the store
  };

  explicit Keychain(SecretStore& store) : store_(store) {}

  [[nodiscard]] SecretState state();
  [[nodiscard]] std::optional<std::string> token();
  void remember(SecretState state, std::optional<std::string> token);
  void forget();

  void storeChanged();
  void unlockAnswered(bool opened);
  /// Whether the token was out of reach when the store was last asked.
  [[nodiscard]] bool isShut() const;
  [[nodiscard]] bool isOpenNow();
  void write();
  SecretWrite writeWhatWaits();
  [[nodiscard]] bool waitsForLater(SecretWrite written) const;
  void nothingWaits();

  SecretStore& store_;
  bool storeReportsChanges_ = false;
  std::function<void(bool opened)> answered_;
  std::optional<SecretState> state_;  ///< what the store said last
  std::optional<std::string> token_;  ///< fetched when it is used, where `state_` is `found`
  bool hasSeenToken_ = false;         ///< there was one at some time since the launch
  Waiting waiting_ = Waiting::nothing;
  std::optional<std::string> waitingToken_;  ///< to be saved, where `waiting_` says so
  bool refused_ = false;
  Question question_ = Question::none;
};

}  // namespace notewick
