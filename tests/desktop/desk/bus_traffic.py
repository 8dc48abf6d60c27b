"""The messages of the session bus that one program sends or gets, as dbus-monitor sees them."""

import os
import subprocess
import tempfile
import time
from collections import Counter, namedtuple

import dbus
import dbus.lowlevel

from desk.waiting import wait_until

Message = namedtuple("Message", "kind serial sender destination path interface member")

_BUS = "org.freedesktop.DBus"
_MARKS = "tools.velk.notewick.Marks"


def _connections(pid):
    """The unique names of a process."""
    bus = dbus.SessionBus().get_object(_BUS, "/org/freedesktop/DBus", introspect=False)

    def belongs(name):
        try:
            return int(bus.GetConnectionUnixProcessID(name, dbus_interface=_BUS)) == pid
        except dbus.DBusException:  # it has just left
            return False

    return {
        str(name) for name in bus.ListNames(dbus_interface=_BUS) if name.startswith(":") and belongs(name)
    }


class BusTraffic:
    """Records while the `with` block runs; count afterwards what a running program had to do with."""

    def __enter__(self):
        self._output = tempfile.TemporaryFile()
        self._monitor = subprocess.Popen(["dbus-monitor", "--profile", "--session"], stdout=self._output)
        self._wait_for_a_mark("the monitor of the bus")
        return self

    def __exit__(self, *_):
        self._wait_for_a_mark("the last message")
        self._monitor.terminate()
        self._monitor.wait()
        self._messages = list(self._recorded())
        self._output.close()

    def _wait_for_a_mark(self, what):
        """Waits until the monitor has seen a signal that is sent from now on."""
        mark = f"Mark{time.monotonic_ns()}"

        def is_marked():
            dbus.SessionBus().send_message(dbus.lowlevel.SignalMessage("/", _MARKS, mark))
            return any(message.member == mark for message in self._recorded())

        wait_until(is_marked, what=what)

    def _recorded(self):
        # pread: the file's position belongs to the monitor, which is still writing.
        for line in os.pread(self._output.fileno(), 1 << 26, 0).decode().splitlines():
            kind, *fields = line.split("\t")
            if kind in ("mc", "mr", "err", "sig") and len(fields) > 4:
                yield Message(kind, *(fields[1:] + [""] * 2)[:6])

    def count_of(self, program):
        """How many messages this running program sent or got, by name; those with the test are left out."""
        names = _connections(program.pid)
        test = dbus.SessionBus().get_unique_name()
        ends = ((message, {message.sender, message.destination}) for message in self._messages)
        return Counter(
            m.member or "an answer" for m, between in ends if names & between and test not in between
        )

    def count_with(self, program, service):
        """How many of them were with the owner of this bus name."""
        names, partner = _connections(program.pid), {service, str(dbus.SessionBus().get_name_owner(service))}
        ends = ({message.sender, message.destination} for message in self._messages)
        return sum(bool(names & between and partner & between) for between in ends)
