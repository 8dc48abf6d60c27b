"""Windows of the X server, as the window manager sees them (EWMH)."""

import re
import subprocess

from desk.any_window import AnyWindow, Geometry
from desk.waiting import wait_until


def _run(*arguments):
    done = subprocess.run(arguments, capture_output=True, text=True, timeout=10, check=False)
    return done.stdout if done.returncode == 0 else ""


class Window(AnyWindow):
    def _property(self, name):
        _, separator, value = _run("xprop", "-notype", "-id", self.number, name).strip().partition(" = ")
        return value if separator else ""

    def _texts(self, name):
        return [re.sub(r"\\(.)", r"\1", t) for t in re.findall(r'"((?:[^"\\]|\\.)*)"', self._property(name))]

    @property
    def title(self):
        return (self._texts("_NET_WM_NAME") or self._texts("WM_NAME") or [""])[0]

    @property
    def pid(self):
        return int(self._property("_NET_WM_PID") or 0)

    @property
    def class_name(self):
        return (self._texts("WM_CLASS") or [""])[-1]

    @property
    def states(self):
        """For example {"ABOVE", "SKIP_TASKBAR", "STICKY"}."""
        return set(re.findall(r"_NET_WM_STATE_(\w+)", self._property("_NET_WM_STATE")))

    @property
    def is_on_all_desktops(self):
        return self._property("_NET_WM_DESKTOP") == str(0xFFFFFFFF)

    @property
    def types(self):
        return set(re.findall(r"_NET_WM_WINDOW_TYPE_(\w+)", self._property("_NET_WM_WINDOW_TYPE")))

    @property
    def is_transient(self):
        """Whether it belongs to another window, or to the group of its program's windows."""
        return "window id" in _run("xprop", "-id", self.number, "WM_TRANSIENT_FOR")

    @property
    def geometry(self):
        """Of the contents, without the frame, in pixels of the screen; None when it is gone."""
        text = _run("xwininfo", "-id", self.number)
        fields = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        found = [re.search(rf"{field}: +(-?\d+)", text) for field in fields]
        return Geometry(*(int(f[1]) for f in found)) if all(found) else None

    @property
    def exists(self):
        return self in everything()

    @property
    def is_active(self):
        return self in _root_windows("_NET_ACTIVE_WINDOW")

    def _activate(self):
        _run("wmctrl", "-i", "-a", self.number)

    def retitle(self, title):
        """Gives it another title, as a browser does when its page changes."""
        _run("wmctrl", "-i", "-r", self.number, "-N", title)
        wait_until(lambda: self.title == title, what=f"the title {title!r}")

    def move(self, x, y):
        _run("xdotool", "windowmove", "--sync", self.number, str(x), str(y))

    def ask_to_close(self):
        """What the close button of its frame does."""
        _run("wmctrl", "-i", "-c", self.number)


def _root_windows(name):
    return [Window(f"0x{int(n, 16):08x}") for n in re.findall(r"0x[0-9a-f]+", _run("xprop", "-root", name))]


def everything():
    """All windows that the window manager knows, in the order of their appearance."""
    return _root_windows("_NET_CLIENT_LIST")
