"""The tray's host, as the programs of the desktop hear of it."""

import time

import dbus
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

_PATIENCE = 10  # seconds
_DAEMON = "org.freedesktop.DBus"


class TrayHost:
    """Tells when a program's item is registered at the tray's host."""

    def __init__(self):
        self._bus = dbus.SessionBus(mainloop=DBusGMainLoop(), private=True)
        self._loop = GLib.MainLoop()
        self._registered = {}
        self._bus.add_signal_receiver(
            self._add, "StatusNotifierItemRegistered", "org.kde.StatusNotifierWatcher"
        )

    def _add(self, item):
        now = time.monotonic()
        try:
            self._registered[self._pid_of(item.partition("/")[0])] = now
        except dbus.DBusException:
            return  # the second word from a program that has ended meanwhile
        self._loop.quit()

    def _pid_of(self, owner):
        daemon = self._bus.get_object(_DAEMON, "/org/freedesktop/DBus", introspect=False)
        return int(daemon.GetConnectionUnixProcessID(owner, dbus_interface=_DAEMON))

    def registration(self, program):
        """When the item of this program was registered, as soon as it is."""
        give_up = GLib.timeout_add_seconds(_PATIENCE, self._loop.quit)
        deadline = time.monotonic() + _PATIENCE
        while program.pid not in self._registered and time.monotonic() < deadline:
            self._loop.run()
        if program.pid not in self._registered:
            raise AssertionError("the tray item did not come")
        GLib.source_remove(give_up)
        return self._registered.pop(program.pid)
