#!/usr/bin/python3
"""A program on the accessibility bus with one active window, whose title is the first argument.

On the signal USR1 the window gets the title of the second argument, the program says so, and from then on
answers nothing any more. A third argument is the program's name in place of "fake".
"""

import os
import signal
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

ACCESSIBLE = "org.a11y.atspi.Accessible"
EVENTS = "org.a11y.atspi.Event.Object"
ROOT = "/org/a11y/atspi/accessible/root"
WINDOW = "/org/a11y/atspi/accessible/1"
ACTIVE = 1 << 1


class Node(dbus.service.Object):
    def __init__(self, bus, path, name, children=(), state=0):
        super().__init__(bus, path)
        self.name = name
        self._state = state
        self._children = [(bus.get_unique_name(), dbus.ObjectPath(child)) for child in children]

    @dbus.service.method(ACCESSIBLE, out_signature="a(so)")
    def GetChildren(self):
        return dbus.Array(self._children, signature="(so)")

    @dbus.service.method(ACCESSIBLE, out_signature="au")
    def GetState(self):
        return dbus.Array([self._state, 0], signature="u")

    @dbus.service.method("org.freedesktop.DBus.Properties", in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return {"Name": self.name}[name]

    @dbus.service.signal(EVENTS, signature="siiva{sv}")
    def PropertyChange(self, detail, first, second, value, properties):
        pass


def join_bus():
    launcher = dbus.SessionBus().get_object("org.a11y.Bus", "/org/a11y/bus")
    bus = dbus.bus.BusConnection(launcher.GetAddress(dbus_interface="org.a11y.Bus"))
    return bus


def main(title, later_title, name="fake"):
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = join_bus()
    root = Node(bus, ROOT, name, children=[WINDOW])
    window = Node(bus, WINDOW, title, state=ACTIVE)
    registry = bus.get_object("org.a11y.atspi.Registry", ROOT)
    registry.Embed((bus.get_unique_name(), dbus.ObjectPath(ROOT)), dbus_interface="org.a11y.atspi.Socket")

    def rename_and_stop():
        window.name = later_title
        empty = dbus.Dictionary({}, signature="sv")
        window.PropertyChange("accessible-name", 0, 0, later_title, empty)
        bus.flush()
        os.kill(os.getpid(), signal.SIGSTOP)

    GLib.unix_signal_add(GLib.PRIORITY_HIGH, signal.SIGUSR1, rename_and_stop)
    GLib.MainLoop().run()
    return root


if __name__ == "__main__":
    main(*sys.argv[1:])
