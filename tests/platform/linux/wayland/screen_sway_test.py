"""Titles in a Wayland session: from the compositor, and from the accessibility bus."""

import signal
import unittest

import desk
from title_reader import Reader


class InSway(unittest.TestCase):
    def setUp(self):
        self.addCleanup(desk.close_all)

    def start_reader(self, *options, **environment):
        reader = Reader(*options, **environment)
        self.addCleanup(reader.close)
        return reader


class ScreenFromTheCompositor(InSway):
    def test_reads_native_windows_and_those_of_x_programs_without_asking_them(self):
        self.start_reader().wait_for(lambda sample: sample.nothing_is_frontmost, "an empty desktop")
        program = desk.zenity("Message to Léna O’Keefe")
        program.signal(signal.SIGSTOP)
        self.addCleanup(program.signal, signal.SIGCONT)
        reader = self.start_reader()
        sample = reader.sample()
        self.assertEqual(sample.focused, "Message to Léna O’Keefe", "it was there before the reader")
        self.assertTrue(sample.trusted)
        desk.xterm("Tobias Hargreave")
        sample = reader.wait_for_focus("Tobias Hargreave")
        self.assertEqual((sample.app, sample.windows), ("XTerm", ["Tobias Hargreave"]))

    def test_windows_of_one_program_come_in_the_order_of_their_use(self):
        reader = self.start_reader()
        first = desk.zenity("first").window("first")
        desk.zenity("second")
        self.assertEqual(reader.wait_for_focus("second").windows, ["second", "first"])
        first.focus()
        self.assertEqual(reader.wait_for_focus("first").windows, ["first", "second"])
        first.close()
        self.assertEqual(reader.wait_for_focus("second").windows, ["second"])

    def test_reads_all_windows_of_this_program_itself(self):
        reader = self.start_reader("--window", "quick note", "sign in", QT_QPA_PLATFORM="xcb")
        reader.wait_for_focus("sign in")
        desk.windows.wait_for("quick note", pid=reader.pid).focus()
        sample = reader.wait_for_focus("quick note")
        self.assertEqual((sample.app, sample.windows), ("VELK Notewick", ["quick note", "sign in"]))

    def test_a_display_that_is_not_there_leaves_the_x_server(self):
        desk.xterm("Tobias Hargreave").window().focus()
        sample = self.start_reader(WAYLAND_DISPLAY="nowhere").sample()
        self.assertEqual(sample.focused, "Tobias Hargreave")


class ScreenFromTheAccessibilityBus(InSway):
    def test_follows_the_active_window(self):
        reader = self.start_reader("--reader", "atspi")
        first = desk.zenity("first").window("first")
        self.assertTrue(reader.wait_for_focus("first").trusted)
        desk.zenity("second")
        self.assertEqual(reader.wait_for_focus("second").windows, ["second"])
        first.focus()
        reader.wait_for_focus("first")

    def test_reads_all_windows_of_this_program_itself_from_the_x_server(self):
        options = ("--reader", "atspi+x11", "--window", "quick note", "sign in")
        reader = self.start_reader(*options, QT_QPA_PLATFORM="xcb")
        reader.wait_for_focus("sign in")
        desk.windows.wait_for("quick note", pid=reader.pid).focus()
        sample = reader.wait_for_focus("quick note")
        self.assertEqual(sample.app, "VELK Notewick")
        self.assertCountEqual(sample.windows, ["quick note", "sign in"])

    def test_of_programs_that_are_not_on_it_those_of_the_x_server_are_read_there(self):
        reader = self.start_reader("--reader", "atspi+x11")
        native = desk.zenity("native").window()
        self.assertEqual(reader.wait_for_focus("native").app, "zenity")
        desk.xterm("not on the bus").window().focus()
        sample = reader.wait_for_focus("not on the bus")
        self.assertEqual((sample.app, sample.windows), ("XTerm", ["not on the bus"]))
        native.focus()
        self.assertEqual(reader.wait_for_focus("native").app, "zenity")


if __name__ == "__main__":
    unittest.main()
