"""What a running program costs: the memory that it keeps, and how long its main thread answers nobody."""

import os
import threading
import time
from pathlib import Path

import dbus

MB = 1e6
_PAUSE = 0.005


def resident(pid):
    """Its memory, with its share of the libraries, in MB."""
    return int(Path(f"/proc/{pid}/statm").read_text().split()[1]) * os.sysconf("SC_PAGE_SIZE") / MB


def _waited(*threads):
    """How long these threads could have run but had no processor, in seconds."""
    return sum(int(Path(f"/proc/{thread}/schedstat").read_text().split()[1]) for thread in threads) / 1e9


def _tasks_on_the_way(pid):
    """The main thread, and Qt's for the bus."""
    tasks = Path(f"/proc/{pid}/task").iterdir()
    return [task for task in tasks if task.name == str(pid) or "QDBus" in (task / "comm").read_text()]


class Watch:
    """Asks the main thread over and over for its item in the tray while the `with` block runs.

    `longest` is the longest time without an answer, in seconds, without what the threads on the way of question and answer
    waited for a processor; `most` is the most memory in MB.
    """

    def __init__(self, program):
        self._pid = program.pid
        self._owner = program.tray.owner
        self._bus = dbus.bus.BusConnection(os.environ["DBUS_SESSION_BUS_ADDRESS"])
        self._is_over = threading.Event()
        self._thread = threading.Thread(target=self._run, daemon=True)
        self.longest = self.most = 0.0
        self.questions = 0

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._is_over.set()
        self._thread.join()

    def _run(self):
        daemon = self._bus.get_object("org.freedesktop.DBus", "/org/freedesktop/DBus", introspect=False)
        waiting = [
            *(str(task.relative_to("/proc")) for task in _tasks_on_the_way(self._pid)),
            int(daemon.GetConnectionUnixProcessID("org.freedesktop.DBus")),
            f"{os.getpid()}/task/{threading.get_native_id()}",
        ]
        item = self._bus.get_object(self._owner, "/StatusNotifierItem", introspect=False)
        while not self._is_over.wait(_PAUSE):
            before, start = _waited(*waiting), time.monotonic()
            item.Get("org.kde.StatusNotifierItem", "Status", dbus_interface=dbus.PROPERTIES_IFACE, timeout=60)
            took = time.monotonic() - start - (_waited(*waiting) - before)
            self.longest = max(self.longest, took)
            self.most = max(self.most, resident(self._pid))
            self.questions += 1
