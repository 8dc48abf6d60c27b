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
/// empty until the next command to sign in or out. Main thread; write failures are swallowed.
class Keychain : public std::enable_shared_from_this<Keychain> {
 public:
  explicit Keychain(SecretStore& store) : store_(store) {}

  void keychainSave(const std::string& token);
  [[nodiscard]] std::optional<std::string> keychainLoad() const;
  void keychainDelete();

  /// Whether a token is there but out of reach until the user opens the store.
  [[nodiscard]] bool isLocked() const;

  /// Whether there is a token, in reach or not.
  [[nodiscard]] bool holdsToken() const { return keychainLoad().has_value() || isLocked(); }

  /// Whether opening the store would help: the token is out of reach, or waits to be saved or to be
  /// removed. False once the user has refused.
  [[nodiscard]] bool wantsUnlock() const;

  /// Asks the user to open the store, unless that question is on screen already. `answered` is
  /// called once, in a later turn, when the user has answered: true when the store is open and
  /// what waited has been written. A question already on screen keeps its own `answered`.
  void requestUnlock(std::function<void(bool opened)> answered);

  /// Takes back that the user refused: from here on a locked store counts as locked again.
  void forgetRefusal() { refused_ = false; }

 private:
  enum class Waiting { nothing, save, removal };

  void unlockAnswered(bool opened);
  void writeWhatWaits();

  SecretStore& store_;
  Waiting waiting_ = Waiting::nothing;
  std::string waitingToken_;
  bool refused_ = false;
  bool asking_ = false;
};

}  // namespace notewick
