"""Windows of the X server, as the window manager sees them (EWMH)."""

import functools
import os
import subprocess

from Xlib import X
from Xlib.display import Display
from Xlib.error import ConnectionClosedError, XError

from desk.any_window import AnyWindow, Geometry
from desk.waiting import wait_until


_LONGEST_PROPERTY = 1 << 16  # in units of four bytes


def _run(*arguments):
    subprocess.run(arguments, capture_output=True, timeout=10, check=False)


@functools.cache
def _connection(name):
    return Display(name)


def _server():
    """The X server that the variable DISPLAY names now; a test may end its own."""
    connection = _connection(os.environ["DISPLAY"])
    try:
        connection.pending_events()
        return connection
    except ConnectionClosedError:
        _connection.cache_clear()
        return _connection(os.environ["DISPLAY"])


def _property(window, name):
    """The items of a property, a bytes object where they are of eight bits; empty without any."""
    try:
        atom = _server().get_atom(name)
        found = window.get_full_property(atom, X.AnyPropertyType, sizehint=_LONGEST_PROPERTY)
    except XError:  # the window is gone
        return []
    return found.value if found else []


class Window(AnyWindow):
    @property
    def _resource(self):
        return _server().create_resource_object("window", int(self.number, 0))

    def _texts(self, name, encoding="utf-8"):
        return bytes(_property(self._resource, name)).decode(encoding, errors="replace").split("\0")

    def _names(self, name):
        """Of the atoms in a property, without what all of them begin with."""
        atoms = _property(self._resource, name)
        return {_server().get_atom_name(atom).removeprefix(name + "_") for atom in atoms}

    @property
    def title(self):
        return self._texts("_NET_WM_NAME")[0] or self._texts("WM_NAME", "latin-1")[0]

    @property
    def pid(self):
        return next(iter(_property(self._resource, "_NET_WM_PID")), 0)

    @property
    def class_name(self):
        return (self._texts("WM_CLASS") + [""])[1]

    @property
    def states(self):
        """For example {"ABOVE", "SKIP_TASKBAR", "STICKY"}."""
        return self._names("_NET_WM_STATE")

    @property
    def is_on_all_desktops(self):
        return list(_property(self._resource, "_NET_WM_DESKTOP")) == [0xFFFFFFFF]

    @property
    def types(self):
        return self._names("_NET_WM_WINDOW_TYPE")

    @property
    def is_transient(self):
        """Whether it belongs to another window, or to the group of its program's windows."""
        return bool(_property(self._resource, "WM_TRANSIENT_FOR"))

    @property
    def geometry(self):
        """Of the contents, without the frame, in pixels of the screen; None when it is gone."""
        try:
            size = self._resource.get_geometry()
            place = size.root.translate_coords(self._resource, -size.border_width, -size.border_width)
        except XError:
            return None
        return Geometry(place.x, place.y, size.width, size.height)

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
    return [Window(f"0x{number:08x}") for number in _property(_server().screen().root, name)]


def everything():
    """All windows that the window manager knows, in the order of their appearance."""
    return _root_windows("_NET_CLIENT_LIST")
