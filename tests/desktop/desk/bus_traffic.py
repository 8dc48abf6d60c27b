"""The messages of the session bus that one program sends or gets, as dbus-monitor sees them."""

import os
import subprocess
import tempfile
from collections import Counter, namedtuple

import dbus

from desk.waiting import wait_until

Message = namedtuple("Message", "kind serial sender destination path interface member")

_BUS = "org.freedesktop.DBus"
_MARK = "tools.velk.notewick.Mark"
_STORE = "/org/freedesktop/secrets"
_KINDS = "mc", "mr", "err", "sig"


def _bus():
    return dbus.SessionBus().get_object(_BUS, "/org/freedesktop/DBus", introspect=False)


def _connections(pid):
    """The unique names of a process."""

    def belongs(name):
        try:
            return int(_bus().GetConnectionUnixProcessID(name, dbus_interface=_BUS)) == pid
        except dbus.DBusException:  # it has just left
            return False

    return {str(name) for name in _bus().ListNames(dbus_interface=_BUS) if name.startswith(":") and belongs(name)}


class BusTraffic:
    """Records while the `with` block runs; count afterwards what a running program had to do with."""

    def __enter__(self):
        self._output = tempfile.TemporaryFile()
        self._monitor = subprocess.Popen(["dbus-monitor", "--profile", "--session"], stdout=self._output)
        wait_until(self._is_marked, what="the monitor of the bus")
        return self

    def __exit__(self, *_):
        before = self._marks()
        wait_until(lambda: self._is_marked() and self._marks() > before, what="the last message")
        self._monitor.terminate()
        self._monitor.wait(10)
        self._messages = list(self._recorded())
        self._output.close()

    def _is_marked(self):
        """Whether the monitor has seen a signal of ours; sends one."""
        mark = dbus.lowlevel.SignalMessage("/", _MARK, "Mark")
        dbus.SessionBus().send_message(mark)
        return self._marks() > 0

    def _marks(self):
        return sum(message.interface == _MARK for message in self._recorded())

    def _recorded(self):
        # pread: the file's position belongs to the monitor, which is still writing.
        for line in os.pread(self._output.fileno(), 1 << 26, 0).decode().splitlines():
            kind, *fields = line.split("\t")
            if kind in _KINDS and len(fields) > 4:
                yield Message(kind, *(fields[1:] + [""] * 2)[:6])

    def of(self, program):
        """The messages from and to this running program, those with the secret store and with the test left out.

        An answer bears the path and the name of what it answers.
        """
        program_names = _connections(program.pid)
        test_name = dbus.SessionBus().get_unique_name()
        for message in self._with_named_answers():
            ends = {message.sender, message.destination}
            if program_names & ends and test_name not in ends and not message.path.startswith(_STORE):
                yield message

    def _with_named_answers(self):
        questions = {}
        for message in self._messages:
            if message.kind == "mc":
                questions[message.sender, message.serial] = message
            if message.kind in ("mr", "err"):
                # dbus-monitor puts the number of the question where the path is otherwise.
                question = questions.get((message.destination, message.path))
                path, member = (question.path, question.member) if question else ("", "something earlier")
                message = message._replace(path=path, member=f"answer to {member}")
            yield message

    def count_of(self, program):
        """How many of them there were, by name."""
        return Counter(message.member for message in self.of(program))
