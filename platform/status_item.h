#pragma once

#include <cstddef>
#include <string>

#include "platform/menu.h"

namespace notewick {

/// How the item in the status bar looks. The image stands before the title.
struct StatusItemAppearance {
  std::string symbolName;
  std::string accessibilityDescription;
  std::string title;
};

/// Receives what the user did with the status item. Main thread.
class StatusItemTarget {
 public:
  virtual ~StatusItemTarget() = default;

  /// An enabled item was chosen; every action but `terminate` arrives here. The item may come from
  /// a menu that has been replaced meanwhile.
  virtual void menuItemChosen(const MenuItem& item) = 0;

  /// The item itself was clicked, where that does not open the menu.
  virtual void statusItemClicked() = 0;
};

/// The program's item in the status bar or tray. Main thread. Where the desktop has none the calls
/// have no visible effect, and the item appears when a host for it does.
class StatusItem {
 public:
  virtual ~StatusItem() = default;

  /// `count` is the number in the title, 0 where it has none. Front ends without a title show it
  /// in their own way.
  virtual void setTitle(const std::string& title, std::size_t count) = 0;

  /// Whether the desktop shows the item now. Where it does not, the menu is the context menu of the
  /// quick-note panel.
  [[nodiscard]] virtual bool isShown() const = 0;

  /// Replaces the menu whole; safe while the old one is open. It may be called many times in a turn
  /// of the main loop: what the user sees may follow at the end of the turn.
  virtual void setMenu(const Menu& menu) = 0;
};

}  // namespace notewick
