#!/usr/bin/python3
"""An accessibility bus that hangs, or whose parts do, while the real program starts and while it runs."""

import os
import signal
import unittest
from pathlib import Path

import desk
from desk.story import Story
from watched import Watch

PARTS = ("at-spi-bus-launcher", "dbus-daemon", "at-spi2-registryd")
LONGEST_AWAY = 0.25  # seconds


def parts_of_the_session():
    """The processes of the accessibility bus in this session, by their names."""
    mark = f"NOTEWICK_SESSION_MARK={os.environ['NOTEWICK_SESSION_MARK']}".encode()
    found = {}
    for process in Path("/proc").glob("[0-9]*"):
        try:
            words = (process / "cmdline").read_bytes().split(b"\0")
            is_ours = mark in (process / "environ").read_bytes().split(b"\0")
        except OSError:
            continue
        name = Path(os.fsdecode(words[0])).name
        if (
            is_ours
            and name in PARTS
            and (name != "dbus-daemon" or any(b"accessibility" in word for word in words))
        ):
            found[name] = int(process.name)
    return found


class AHangingAccessibilityBus(Story):
    def hang(self, part):
        pid = parts_of_the_session()[part]
        os.kill(pid, signal.SIGSTOP)
        self.addCleanup(os.kill, pid, signal.SIGCONT)
        return pid

    def use(self, program):
        """All that goes without accessibility: the menu, the widget, and a note that waits in the outbox."""
        with Watch(program) as watch:
            program.wait_for_entry("Watching · 12 participants")
            program.choose("Hide floating widget")
            program.widget.wait_until_gone()
            program.choose("Show floating widget")
            program.widget.window
            program.send_what_waits()
            desk.wait_until(lambda: self.service.inputs() != [], what="the note")
        print(f"{self.id()}: {watch.longest * 1000:.0f} ms away at most")
        self.assertLessEqual(watch.longest, LONGEST_AWAY)

    def let_a_note_wait(self):
        self.service.forget()
        self.service.fail(status=503, times=1)
        self.home.leave_in_outbox([self.home.waiting_note(1)])

    def go_on(self, program, pid):
        os.kill(pid, signal.SIGCONT)
        program.widget.write_note("Written afterwards")
        desk.wait_until(lambda: "Written afterwards" in self.service.inputs(), what="one more note")
        self.assertEqual(program.quit(), 0)

    def test_delays_nothing_where_its_launcher_hangs_at_the_start(self):
        """For the bus itself, and for its registry, Qt waits in every program that starts."""
        self.start_signed_in().quit()
        self.let_a_note_wait()
        pid = self.hang("at-spi-bus-launcher")
        program = self.start()
        self.use(program)
        self.go_on(program, pid)

    def test_delays_nothing_where_it_hangs_later(self):
        self.start_signed_in().quit()
        for part in PARTS:
            with self.subTest(part=part):
                self.let_a_note_wait()
                program = self.start()
                desk.wait_until(lambda: self.home.list("outbox.json")[0]["attempts"], what="the failed try")
                pid = self.hang(part)
                self.use(program)
                self.go_on(program, pid)


if __name__ == "__main__":
    unittest.main()
