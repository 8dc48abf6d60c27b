#pragma once

#include <string>

#include "platform/menu.h"

namespace notewick {

/// How the item in the status bar looks. The image stands before the title.
struct StatusItemAppearance {
  std::string symbolName;
  std::string accessibilityDescription;
  std::string title;
};

/// Told what the user did with the status item. Main thread.
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

  virtual void setTitle(const std::string& title) = 0;

  /// Replaces the menu whole; safe while the old one is open.
  virtual void setMenu(const Menu& menu) = 0;
};

}  // namespace notewick
