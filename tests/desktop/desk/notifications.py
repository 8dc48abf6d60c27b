"""Notifications, read back from dunst, which shows them; on sway, where mako does, they are cleared only."""

import subprocess
from collections import namedtuple

import dbus

from desk import screen
from desk.waiting import LIMIT, wait_until
from desk.x_windows import Window

Notification = namedtuple("Notification", "number app summary body")

_DUNST = "org.dunstproject.cmd0"

_cleared_at = -1


def _dunst():
    path = "/org/freedesktop/Notifications"
    return dbus.SessionBus().get_object("org.freedesktop.Notifications", path, introspect=False)


def _history():
    """Of dunst, the oldest first. It cannot be cleared, so clear() remembers how far it was read."""
    entries = _dunst().NotificationListHistory(dbus_interface=_DUNST, timeout=LIMIT)
    return sorted((e for e in entries if e["timestamp"] > _cleared_at), key=lambda e: e["timestamp"])


def _close_all():
    _dunst().NotificationCloseAll(dbus_interface=_DUNST, timeout=LIMIT)


def everything():
    """All since the last clear(), the oldest first.

    dunst tells the text of closed ones only, so this closes those on the screen: look at the screen, or
    click them, before.
    """
    _close_all()
    return [
        Notification(int(e["id"]), *(str(e[key]) for key in ("appname", "summary", "body")))
        for e in _history()
    ]


def count_displayed():
    properties = dbus.Interface(_dunst(), "org.freedesktop.DBus.Properties")
    return int(properties.Get(_DUNST, "displayedLength", timeout=LIMIT))


def place():
    """Where dunst shows them on the screen: one window holds all."""
    found = subprocess.run(
        ["xdotool", "search", "--onlyvisible", "--class", "Dunst"], capture_output=True, text=True
    )
    return Window(found.stdout.split()[0]).geometry


def click():
    """Clicks the lowest one on the screen, wherever it is."""
    wait_until(count_displayed, what="a notification")
    geometry = place()
    screen.click(geometry.x + geometry.width // 2, geometry.y + geometry.height - 10)


def wait_for(summary, timeout=LIMIT):
    """The latest with exactly this summary, as soon as it is there."""

    def latest():
        return next((n for n in reversed(everything()) if n.summary == summary), None)

    return wait_until(latest, timeout, f"the notification {summary!r}")


def clear():
    """Closes and forgets all."""
    global _cleared_at
    if screen.IN_SWAY:
        subprocess.run(["makoctl", "dismiss", "--all"], timeout=LIMIT, check=True)
        return
    _close_all()
    _cleared_at = max((e["timestamp"] for e in _history()), default=_cleared_at)
