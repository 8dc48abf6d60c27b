"""Titles read from the accessibility bus, here in an X session, where the windows are easy to move."""

import signal
import unittest
from pathlib import Path

import desk
from title_reader import Reader, text_file

FAKE_PROGRAM = Path(__file__).resolve().with_name("fake_accessible_program.py")
LIMIT = 250  # milliseconds that all reads of a sample may take


def has_stopped(program):
    with open(f"/proc/{program.pid}/stat", encoding="utf-8") as file:
        return file.read().rpartition(")")[2].split()[0] == "T"


class ScreenFromTheAccessibilityBus(unittest.TestCase):
    def setUp(self):
        self.addCleanup(desk.close_all)
        self.reader = Reader("--reader", "atspi")
        self.addCleanup(self.reader.close)

    def stop(self, program):
        program.signal(signal.SIGSTOP)
        self.addCleanup(program.signal, signal.SIGCONT)

    def test_reads_all_windows_of_the_active_program(self):
        self.reader.wait_for(lambda sample: sample.nothing_is_frontmost, "an empty desktop")
        first, second = text_file("first"), text_file("second")
        titles = [f"{path} - Mousepad" for path in (first, second)]
        editor = desk.start("mousepad", "--disable-server", "-o", "window", first, second)
        windows = [editor.window(title) for title in titles]
        for window, title in zip(windows, titles):
            window.focus()
            sample = self.reader.wait_for_focus(title)
            self.assertTrue(sample.trusted)
            self.assertEqual(sample.app, "mousepad")
            self.assertCountEqual(sample.windows, titles)

    def test_reads_the_first_eight_windows_and_the_active_one(self):
        titles = [f"window {number}" for number in range(1, 13)]
        desk.start(FAKE_PROGRAM, *titles, "--active", 11, "--unreadable", 1)
        sample = self.reader.wait_for_focus("window 12")
        self.assertEqual(sample.windows, ["window 1", None, *titles[2:8]])

    def test_nothing_is_frontmost_while_a_program_without_accessibility_is_active(self):
        desk.zenity("first")
        self.reader.wait_for_focus("first")
        desk.xterm("silent").window().focus()
        self.reader.wait_for(lambda sample: sample.nothing_is_frontmost, "no frontmost application")

    def test_a_stopped_program_is_waited_for_once(self):
        program = desk.zenity("stopped while active")
        self.reader.wait_for_focus("stopped while active")
        self.stop(program)
        samples = [self.reader.sample() for _ in range(100)]
        self.assertLess(sum(sample.milliseconds for sample in samples), 100 * LIMIT, "once a sample")

    def test_a_stopped_program_counts_for_one_sample_with_the_title_of_its_last_event(self):
        program = desk.start(FAKE_PROGRAM, "before", "--later", "after")
        self.addCleanup(program.signal, signal.SIGCONT)
        self.reader.wait_for_focus("before")
        program.signal(signal.SIGUSR1)
        desk.wait_until(lambda: has_stopped(program), what="a stopped program")
        sample = self.reader.sample()
        self.assertEqual((sample.app, sample.focused, sample.windows), ("fake", "after", ["after"]))
        sample = self.reader.sample()
        self.assertEqual((sample.app, sample.focused, sample.windows), ("fake", None, []))
        program.signal(signal.SIGCONT)
        self.reader.wait_for_focus("after")

    def test_windows_of_programs_that_cannot_be_are_left_out_and_a_name_that_is_not_there(self):
        strangers = ("--strangers", "", "nobody", ":", ":1.", "a b.c")
        desk.start(FAKE_PROGRAM, "Tobias Hargreave", "--name", "", *strangers)
        sample = self.reader.wait_for_focus("Tobias Hargreave")
        self.assertEqual((sample.app, sample.windows), (None, ["Tobias Hargreave"]))

    def test_the_title_of_a_stopped_program_ends_when_another_is_active_and_is_read_again(self):
        stopped, other = desk.zenity("stopped"), desk.zenity("other")
        stopped.window().focus()
        self.reader.wait_for_focus("stopped")
        self.stop(stopped)
        self.assertEqual(self.reader.sample().focused, "stopped")
        other.window().focus()
        self.reader.wait_for_focus("other")
        stopped.signal(signal.SIGCONT)
        stopped.window().focus()
        self.reader.wait_for_focus("stopped")

    def test_finds_the_active_window_although_another_program_has_stopped_before_it_started(self):
        self.stop(desk.zenity("stopped"))
        desk.zenity("active")
        reader = Reader("--reader", "atspi")
        self.addCleanup(reader.close)
        self.assertLess(reader.sample().milliseconds, 10_000, "D-Bus itself waits for 25 seconds")
        reader.wait_for_focus("active")

    def test_reads_all_windows_of_this_program_itself(self):
        reader = Reader("--reader", "atspi", "--window", "quick note", "sign in")
        self.addCleanup(reader.close)
        sample = reader.wait_for_focus("sign in")
        self.assertEqual((sample.app, sample.windows), ("VELK Notewick", ["quick note", "sign in"]))


class WithoutAccessibilityService(unittest.TestCase):
    def test_without_a_session_bus_it_is_never_trusted(self):
        reader = Reader("--reader", "atspi", DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere")
        self.addCleanup(reader.close)
        sample = reader.ask_for_leave()
        self.assertFalse(sample.trusted)
        self.assertTrue(sample.nothing_is_frontmost)


if __name__ == "__main__":
    unittest.main()
