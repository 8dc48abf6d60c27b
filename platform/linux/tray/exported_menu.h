#pragma once

class QObject;

namespace notewick {

/// The object by which Qt exports the tray icon's menu as com.canonical.dbusmenu; null while it
/// exports none. Every action that is added, removed or changed makes it send a signal of its own,
/// and a host of trays reads the menu again at most of them. Blocking this object's signals holds
/// them back; the signal of the next added or removed action then tells the host of all. Qt names
/// the connection after the process and its tray icons, of which this program has one.
[[nodiscard]] QObject* exportedTrayMenu();

}  // namespace notewick
