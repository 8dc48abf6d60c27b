"""Notifications, read back from dunst, which shows them; on sway, where mako does, they are cleared only."""

import json
import subprocess
from collections import namedtuple

from desk import screen
from desk.waiting import LIMIT, wait_until
from desk.x_windows import Window

Notification = namedtuple("Notification", "number app summary body")

_cleared_at = -1


def _run(*arguments):
    return subprocess.run(arguments, capture_output=True, text=True, timeout=10, check=True).stdout


def _history():
    """Of dunst, the oldest first. It cannot be cleared, so clear() remembers how far it was read."""
    [written] = json.loads(_run("dunstctl", "history"))["data"]
    entries = [{key: field["data"] for key, field in entry.items()} for entry in written]
    return sorted((e for e in entries if e["timestamp"] > _cleared_at), key=lambda e: e["timestamp"])


def everything():
    """All since the last clear(), the oldest first.

    dunst tells the text of closed ones only, so this closes those on the screen: look at the screen, or
    click them, before.
    """
    _run("dunstctl", "close-all")
    return [Notification(e["id"], e["appname"], e["summary"], e["body"]) for e in _history()]


def count_displayed():
    return int(_run("dunstctl", "count", "displayed"))


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
        _run("makoctl", "dismiss", "--all")
        return
    _run("dunstctl", "close-all")
    _cleared_at = max((e["timestamp"] for e in _history()), default=_cleared_at)
