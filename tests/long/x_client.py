"""Windows of this process in the X server, with properties of any bytes."""

import ctypes
import os

from desk.x_windows import Window

_x11 = ctypes.CDLL("libX11.so.6")
_x11.XOpenDisplay.restype = ctypes.c_void_p
_x11.XInternAtom.restype = _x11.XDefaultRootWindow.restype = _x11.XCreateSimpleWindow.restype = ctypes.c_ulong
_REPLACE = 0


class XClient:
    def __init__(self):
        self._display = ctypes.c_void_p(_x11.XOpenDisplay(None))
        self._root = ctypes.c_ulong(_x11.XDefaultRootWindow(self._display))

    def _atom(self, name):
        return ctypes.c_ulong(_x11.XInternAtom(self._display, name.encode(), 0))

    def set(self, number, name, kind, value, form=8):
        count = len(value) if form == 8 else 1
        value = value if form == 8 else ctypes.byref(ctypes.c_long(value))
        atoms = self._atom(name), self._atom(kind)
        _x11.XChangeProperty(self._display, ctypes.c_ulong(number), *atoms, form, _REPLACE, value, count)

    def open(self, title, class_name=b"hostile"):
        """A window on the screen; its number."""
        number = _x11.XCreateSimpleWindow(self._display, self._root, 0, 0, 200, 100, 0, 0, 0)
        self.set(number, "_NET_WM_NAME", "UTF8_STRING", title)
        self.set(number, "WM_CLASS", "STRING", b"x\0" + class_name + b"\0")
        self.set(number, "_NET_WM_PID", "CARDINAL", os.getpid(), form=32)
        self.set(number, "_NET_WM_USER_TIME", "CARDINAL", 0, form=32)  # takes no focus
        _x11.XMapWindow(self._display, ctypes.c_ulong(number))
        _x11.XSync(self._display, 0)
        return number

    def retitle(self, number, title):
        self.set(number, "_NET_WM_NAME", "UTF8_STRING", title)
        _x11.XSync(self._display, 0)

    def close(self, number):
        _x11.XDestroyWindow(self._display, ctypes.c_ulong(number))
        _x11.XSync(self._display, 0)


def seen(number):
    """The same window, as the window manager sees it."""
    return Window(f"0x{number:08x}")
