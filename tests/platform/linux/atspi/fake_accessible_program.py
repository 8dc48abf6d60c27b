#!/usr/bin/python3
"""A program on the accessibility bus, with one window for each title; one of them is active.

On the signal USR1 the active window gets the title of --later, the program says so, and from then on
answers nothing any more.
"""

import argparse
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
WINDOW = "/org/a11y/atspi/accessible/window"
ACTIVE = 1 << 1


class Node(dbus.service.Object):
    def __init__(self, bus, path, name, children=(), strangers=()):
        super().__init__(bus, path)
        self.name = name
        self.state = 0
        programs = [*strangers, *[bus.get_unique_name()] * len(children)]
        places = [*["/"] * len(strangers), *children]
        self._children = [(name, dbus.ObjectPath(place)) for name, place in zip(programs, places)]

    @dbus.service.method(ACCESSIBLE, out_signature="a(so)")
    def GetChildren(self):
        return dbus.Array(self._children, signature="(so)")

    @dbus.service.method(ACCESSIBLE, out_signature="au")
    def GetState(self):
        return dbus.Array([self.state, 0], signature="u")

    @dbus.service.method("org.freedesktop.DBus.Properties", in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        if self.name is None:
            raise dbus.exceptions.DBusException("no name here")
        return {"Name": self.name}[name]

    @dbus.service.signal(EVENTS, signature="siiva{sv}")
    def PropertyChange(self, detail, first, second, value, properties):
        pass


def join_bus():
    launcher = dbus.SessionBus().get_object("org.a11y.Bus", "/org/a11y/bus")
    bus = dbus.bus.BusConnection(launcher.GetAddress(dbus_interface="org.a11y.Bus"))
    return bus


def options():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("titles", nargs="+")
    parser.add_argument("--name", default="fake")
    parser.add_argument("--active", type=int, default=0, help="index of the active window")
    parser.add_argument("--unreadable", type=int, help="index of a window whose title cannot be read")
    parser.add_argument("--later", default="")
    parser.add_argument("--strangers", nargs="*", default=[], help="bus names of windows that are not there")
    return parser.parse_args()


def main(chosen):
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = join_bus()
    paths = [WINDOW + str(index) for index in range(len(chosen.titles))]
    root = Node(bus, ROOT, chosen.name, paths, chosen.strangers)
    windows = [Node(bus, path, title) for path, title in zip(paths, chosen.titles)]
    if chosen.unreadable is not None:
        windows[chosen.unreadable].name = None
    active = windows[chosen.active]
    active.state = ACTIVE
    registry = bus.get_object("org.a11y.atspi.Registry", ROOT)
    registry.Embed((bus.get_unique_name(), dbus.ObjectPath(ROOT)), dbus_interface="org.a11y.atspi.Socket")

    def rename_and_stop():
        active.name = chosen.later
        empty = dbus.Dictionary({}, signature="sv")
        active.PropertyChange("accessible-name", 0, 0, chosen.later, empty)
        bus.flush()
        os.kill(os.getpid(), signal.SIGSTOP)

    GLib.unix_signal_add(GLib.PRIORITY_HIGH, signal.SIGUSR1, rename_and_stop)
    GLib.MainLoop().run()
    return root


if __name__ == "__main__":
    main(options())
