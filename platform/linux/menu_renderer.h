#pragma once

#include <QMenu>
#include <QString>
#include <functional>
#include <memory>
#include <string>

#include "platform/menu.h"

namespace notewick {

/// Who reads the text of a menu item, and so what stands for an access key in it.
enum class MenuReader {
  toolkit,  ///< a menu that this program shows: `&`
  trayHost  ///< a menu that the tray's host shows: `_`, as com.canonical.dbusmenu has it
};

using MenuItemChosen = std::function<void(const MenuItem& item)>;

/// The text that makes `reader` show `title` to the letter. For a tray host it counts on the
/// toolkit making an access key of the first `&` that is not the last character.
[[nodiscard]] QString menuText(const std::string& title, MenuReader reader);

/// Draws the menu into `drawing`, whose old items go. A shortcut is shown, with Control, but works
/// nowhere outside the open menu. `chosen` gets a copy of the item, also when that is gone by then.
void drawMenu(QMenu& drawing, const Menu& menu, MenuReader reader, const MenuItemChosen& chosen);

}  // namespace notewick
