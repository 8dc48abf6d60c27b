"""The tray: items registered at the tray's host, their menus, clicks on both.

What a mouse would do is done by the calls that a host makes (StatusNotifierItem, dbusmenu), because an
item does not know its place on the screen.
"""

import subprocess

import dbus

from desk import programs, screen
from desk.waiting import LIMIT, wait_until
from desk.x_windows import Window

_WATCHER = "org.kde.StatusNotifierWatcher"
_ITEM = "org.kde.StatusNotifierItem"
_MENU = "com.canonical.dbusmenu"
_PROPERTIES = "org.freedesktop.DBus.Properties"


def _bus():
    return dbus.SessionBus()


class Entry:
    """One entry of a menu."""

    def __init__(self, number, properties, children):
        self.number = int(number)
        self.label = _spoken(str(properties.get("label", "")))
        self.enabled = bool(properties.get("enabled", True))
        self.visible = bool(properties.get("visible", True))
        self.separator = properties.get("type", "standard") == "separator"
        self.shortcut = " ".join("+".join(keys) for keys in properties.get("shortcut", []))
        self.children = [Entry(*child) for child in children]

    def __repr__(self):
        return (
            "<separator>"
            if self.separator
            else f"<entry {self.label!r}{'' if self.enabled else ' disabled'}>"
        )


def _spoken(label):
    """As a host shows it: one underscore marks the access key, two stand for one."""
    return label.replace("__", "\0").replace("_", "").replace("\0", "_")


class Item:
    def __init__(self, registration):
        self.owner, _, path = registration.partition("/")
        self._object = _bus().get_object(self.owner, "/" + path, introspect=False)

    def read(self, name, timeout=LIMIT):
        """For example Id, Title, Status, IconName, ToolTip, IconPixmap."""
        return self._object.Get(_ITEM, name, dbus_interface=_PROPERTIES, timeout=timeout)

    @property
    def pid(self):
        return int(_bus().get_object("org.freedesktop.DBus", "/").GetConnectionUnixProcessID(self.owner))

    @property
    def exists(self):
        return any(item.owner == self.owner for item in everything())

    def activate(self):
        """A left click."""
        self._object.Activate(0, 0, dbus_interface=_ITEM, timeout=LIMIT)

    def _menu(self):
        path = self.read("Menu")
        return dbus.Interface(_bus().get_object(self.owner, path, introspect=False), _MENU)

    def menu(self):
        """The entries of the open menu, top to bottom, the hidden ones too."""
        menu = self._menu()
        menu.AboutToShow(dbus.Int32(0), timeout=LIMIT)
        _, root = menu.GetLayout(dbus.Int32(0), dbus.Int32(-1), dbus.Array([], signature="s"), timeout=LIMIT)
        return Entry(*root).children

    def labels(self):
        """What a user reads: labels of the visible entries, "-" for a separator."""
        return ["-" if e.separator else e.label for e in self.menu() if e.visible]

    def entry(self, label):
        """The entry with this label that can be clicked, or None."""
        return next((e for e in self.menu() if e.visible and e.enabled and e.label == label), None)

    def choose(self, label):
        """Waits for the entry to be there and enabled, then clicks it."""
        self.click(wait_until(lambda: self.entry(label), what=f"the menu entry {label}"))

    def click(self, entry):
        """Clicks an entry of the menu as it was when it was read."""
        self._menu().Event(
            entry.number, "clicked", dbus.String("", variant_level=1), dbus.UInt32(0), timeout=LIMIT
        )


def has_host():
    return bool(_bus().name_has_owner(_WATCHER))


def start_host():
    """A host that comes later than the programs, in an X session with --tray none."""
    host = programs.start("xfce4-panel", "--disable-wm-check")
    wait_until(has_host, what="a host of tray icons")
    return host


def _output_of(command):
    return subprocess.run(command, capture_output=True, text=True, timeout=LIMIT, check=False).stdout


def _host_windows():
    """What xfce4-panel shows of its tray: the icons, then a menu that is open."""
    numbers = _output_of(["xdotool", "search", "--onlyvisible", "--class", "wrapper-2.0"]).split()
    return [geometry for number in numbers if (geometry := Window(number).geometry)]


def open_menu():
    """Opens the menu of the only item at xfce4-panel with the mouse; returns the menu's place on the screen."""
    icon = wait_until(_host_windows, what="the tray")[0]
    screen.click(icon.x + icon.width // 2, icon.y + icon.height // 2, button=3)
    higher = lambda: next((g for g in _host_windows() if g.height > icon.height), None)
    return wait_until(higher, what="the open menu")


def everything():
    """All items at the host; none without a host."""
    if not has_host():
        return []
    watcher = _bus().get_object(_WATCHER, "/StatusNotifierWatcher", introspect=False)
    names = watcher.Get(_WATCHER, "RegisteredStatusNotifierItems", dbus_interface=_PROPERTIES, timeout=LIMIT)
    return [Item(str(name)) for name in names]


def shows(program):
    """Whether an icon of this program is in the tray; the program has no other window then.

    A host may begin to take icons that draw themselves before it takes items, and a program stays with the kind
    that it has chosen.
    """
    drawn_by_itself = ["xdotool", "search", "--onlyvisible", "--pid", str(program.pid)]
    return any(i.pid == program.pid for i in everything()) or bool(_output_of(drawn_by_itself))


def item(program, timeout=LIMIT):
    """The item of a program that was started here, as soon as it is registered."""

    def registered():
        return next((i for i in everything() if i.pid == program.pid), None)

    return wait_until(registered, timeout, f"the tray item of {program.arguments[0]}")
