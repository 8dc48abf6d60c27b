#pragma once

#include <optional>
#include <string>
#include <vector>

namespace notewick {

enum class MenuAction {
  openAccessibilitySettings,
  menuSignIn,
  openPending,
  retryOutbox,
  logNow,
  toggleWidget,
  openCaseNotes,
  togglePause,
  reloadParticipants,
  installLoginItem,
  menuSignOut,
  terminate,  ///< the application's own way to end; needs no target
};

/// One line of the menu, as data; a front end draws it and hands it back when it is chosen.
struct MenuItem {
  std::string title{};
  std::optional<MenuAction> action{};
  std::string
      key{};  ///< lower-case letter of the shortcut with the platform's command key, or empty
  std::optional<std::string> representedObject{};
  bool separator = false;

  /// An item without an action is shown greyed.
  [[nodiscard]] bool enabled() const { return action.has_value(); }

  friend bool operator==(const MenuItem&, const MenuItem&) = default;
};

using Menu = std::vector<MenuItem>;

}  // namespace notewick
