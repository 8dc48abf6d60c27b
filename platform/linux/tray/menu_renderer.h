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
  qt,       ///< a menu that this program shows: `&`
  trayHost  ///< a menu that the tray's host shows: `_`, as com.canonical.dbusmenu has it
};

using MenuItemChosen = std::function<void(const MenuItem& item)>;

/// The text that makes `reader` show `title` to the letter. For a tray host it counts on Qt making
/// an access key of the first `&` that is not the last character.
[[nodiscard]] QString menuText(const std::string& title, MenuReader reader);

/// Draws the menu into `drawing`, which holds nothing but what this function drew for the same
/// reader. Lines that stay as they are keep their actions, so the time it takes grows with the
/// differences. A shortcut is shown, with Control, but works nowhere outside the open menu.
/// `chosen` gets a copy of the item as it reads when it is chosen, also when it is gone by then.
///
/// Where `exported` is given (see exportedTrayMenu), it sends one signal for the whole drawing, and
/// none when nothing differs: ItemsPropertiesUpdated for one changed title, else LayoutUpdated.
/// Some hosts read only new lines again after LayoutUpdated, so a line that changes with others is
/// drawn as a new one.
void drawMenu(QMenu& drawing, const Menu& menu, MenuReader reader, const MenuItemChosen& chosen,
              QObject* exported = nullptr);

/// The object by which Qt exports the tray icon's menu as com.canonical.dbusmenu; null while it
/// exports none. Every action that is added, removed or changed makes it send a signal of its own,
/// and a host of trays reads the menu again at most of them. Blocking this object's signals holds
/// them back; the signal of the next added or removed action then tells the host of all. Qt names
/// the connection after the process and its tray icons, of which this program has one.
[[nodiscard]] QObject* exportedTrayMenu();

}  // namespace notewick
