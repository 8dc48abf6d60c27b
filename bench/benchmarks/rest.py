"""What programs cost that have nothing to do: each runs alone, one after the other."""

import contextlib
import time

import desk
from benchmarks import processes
from benchmarks.programs import BARE_QT
from benchmarks.series import Reading
from benchmarks.user import WATCHING, SignedIn, User, sign_in_with_keyboard
from desk import screen
from desk.fast_time import FastTime

SETTLING = 45  # seconds; Qt keeps a thread that has nothing to do for thirty
REST = 300  # seconds


@contextlib.contextmanager
def _notewick(user, disk=None):
    """The program, signed in, its widget shown."""
    program = user.start(disk)
    program.widget.window
    program.wait_for_entry(WATCHING)
    yield program
    program.quit()


@contextlib.contextmanager
def _neighbour(*command):
    with desk.start(*command) as program:
        desk.wait_until(lambda: desk.tray.shows(program), what=f"the icon of {command[0]}")
        yield program


def _bare_tray():
    return _neighbour(BARE_QT, "tray")


def _copyq():
    return _neighbour("copyq")


def _parcellite():
    return _neighbour("parcellite")


def _memory(started):
    with started as program:
        processes.wait_for_rest(program.pid)
        return processes.memory(program.pid)


def memory(rounds):
    """Keys are what is measured and the neighbour's name."""
    user = SignedIn()
    for _ in range(rounds):
        user.service.start()
        own = _memory(_notewick(user))
        user.service.stop()
        neighbours = {"tray": _memory(_bare_tray()), "copyq": _memory(_copyq())}
        yield {
            (kind, name): Reading(own[place], sizes[place])
            for place, kind in enumerate(("pss", "private"))
            for name, sizes in neighbours.items()
        }


def _rest(started, disk=None):
    """The share of a processor in percent, wake-ups a second and confirmations of the disk while it rests."""
    with started as program:
        time.sleep(SETTLING)
        before = _activity(program, disk)
        time.sleep(REST)
        used, woken, flushed = (now - then for now, then in zip(_activity(program, disk), before))
        return {"processor": 100 * used / REST, "wake-ups": woken / REST, "flushes": flushed}


def _activity(program, disk):
    pid = program.pid
    return processes.processor_time(pid), processes.wake_ups(pid), disk.so_far()[1] if disk else 0


def rest(rounds):
    """Keys are what is measured and the neighbour's name."""
    user = SignedIn()
    for _ in range(rounds):
        disk = processes.DiskCount()
        own = _rest(_notewick(user, disk), disk)
        neighbours = {
            "parcellite": _rest(_parcellite()),
            "copyq": _rest(_copyq()),
            "tray": _rest(_bare_tray()),
        }
        compared = {
            (kind, name): Reading(own[kind], figures[kind])
            for name, figures in neighbours.items()
            for kind in ("processor", "wake-ups")
        }
        yield compared | {"flushes": Reading(own["flushes"])}


class Week:
    """A working week at sixty times its speed: another participant is worked on every half hour."""

    HOURS = 40
    FACTOR = 60
    PIECE = 30  # minutes of work
    PEOPLE = ("Tobias Hargreave", "Lena O'Keefe", "Amara Osei")

    def __init__(self):
        self._user = User(FastTime(factor=self.FACTOR).environment)

    def run(self):
        """Megabytes and descriptors at the first rest and at the last."""
        program = self._user.start()
        sign_in_with_keyboard(program)
        window = desk.xterm("Lunch").window()
        self._work(window, program, 4)  # what is made once is made
        before = self._state(program)
        self._work(window, program, 2 * self.HOURS)
        return before, self._state(program)

    def _work(self, window, program, pieces):
        for number in range(pieces):
            window.focus()
            window.retitle(f"Notes on {self.PEOPLE[number % len(self.PEOPLE)]}")
            time.sleep(self.PIECE * 60 / self.FACTOR / 2)
            window.retitle("Lunch")
            time.sleep(self.PIECE * 60 / self.FACTOR / 2)
            self._log_what_was_caught(program)

    def _log_what_was_caught(self, program):
        """With the keyboard: the note, then the second choice of minutes."""
        [entry] = desk.wait_until(lambda: self._caught(program), what="caught work")
        program.choose(entry)
        program.widget.window.focus()
        screen.type_text("Called about the application")
        screen.press("Tab", "Right", "space", "ctrl+Return")
        desk.wait_until(lambda: not self._caught(program), what=f"the end of {entry}")

    @staticmethod
    def _caught(program):
        return [label for label in program.menu() if label.startswith("Log: ")]

    @staticmethod
    def _state(program):
        """Private megabytes, and the fewest descriptors of two seconds: a request has some of its own."""
        fewest = processes.descriptors(program.pid)
        for _ in range(20):
            time.sleep(0.1)
            fewest = min(fewest, processes.descriptors(program.pid))
        return processes.memory(program.pid)[1], fewest


def week(rounds):
    for _ in range(rounds):
        before, after = Week().run()
        megabytes, descriptors = (now - then for now, then in zip(after, before))
        yield {"megabytes": Reading(megabytes), "descriptors": Reading(descriptors)}
