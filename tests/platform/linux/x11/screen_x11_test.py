"""Titles read from the properties of real X windows."""

import ctypes
import os
import signal
import subprocess
import unittest

import dbus
import dbus.lowlevel

import desk
from desk.x_server import XServer
from title_reader import Reader, text_file


def set_long_title(window, title):
    """What xprop cannot: its arguments have a limit."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.restype = ctypes.c_ulong
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    name, kind = (
        ctypes.c_ulong(x11.XInternAtom(display, atom, 0)) for atom in (b"_NET_WM_NAME", b"UTF8_STRING")
    )
    number = ctypes.c_ulong(int(window.number, 16))
    text = title.encode()
    x11.XChangeProperty(display, number, name, kind, 8, 0, text, len(text))
    x11.XCloseDisplay(display)


def window_manager_is_there():
    done = subprocess.run(
        ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], capture_output=True, text=True, check=False
    )
    return "window id" in done.stdout


class ScreenLocker:
    """Tells the session bus that it hides the screen, or that it does so no more."""

    def __init__(self, interface):
        self._interface = interface
        self._bus = dbus.bus.BusConnection(os.environ["DBUS_SESSION_BUS_ADDRESS"])

    def tell(self, is_active):
        path = "/" + self._interface.replace(".", "/")
        signal_ = dbus.lowlevel.SignalMessage(path, self._interface, "ActiveChanged")
        signal_.append(is_active)
        self._bus.send_message(signal_)
        self._bus.flush()

    def die(self):
        self._bus.close()


class ScreenOnX11(unittest.TestCase):
    def setUp(self):
        self.addCleanup(desk.close_all)
        self.reader = self.start_reader()

    def start_reader(self, *options, **environment):
        reader = Reader(*options, **environment)
        self.addCleanup(reader.close)
        return reader

    def test_reads_the_focused_window_of_the_active_application(self):
        desk.xterm("Tobias Hargreave")
        desk.xterm("Message to Léna O’Keefe")
        sample = self.reader.wait_for_focus("Message to Léna O’Keefe")
        self.assertTrue(sample.trusted)
        self.assertEqual((sample.app, sample.windows), ("XTerm", ["Message to Léna O’Keefe"]))

    def test_reads_all_windows_of_one_process_the_topmost_first(self):
        first, second = text_file("first"), text_file("second")
        editor = desk.start("mousepad", "--disable-server", "-o", "window", first, second)
        titles = [f"{path} - Mousepad" for path in (first, second)]
        windows = [editor.window(title) for title in titles]
        desk.xterm("in between")
        for window, title in zip(windows, titles):
            window.focus()
            other = titles[1 - titles.index(title)]
            self.assertEqual(self.reader.wait_for_focus(title).windows, [title, other])

    def test_reads_all_windows_of_this_program_itself(self):
        reader = self.start_reader("--window", "quick note", "sign in", QT_QPA_PLATFORM="xcb")
        reader.wait_for_focus("sign in")
        desk.windows.wait_for("quick note", pid=reader.pid).focus()
        sample = reader.wait_for_focus("quick note")
        self.assertEqual((sample.app, sample.windows), ("VELK Notewick", ["quick note", "sign in"]))

    def test_reads_the_first_eight_windows(self):
        titles = [f"window {number}" for number in range(12)]
        program = self.start_reader("--window", *titles, QT_QPA_PLATFORM="xcb")
        for title in titles:
            desk.windows.wait_for(title, pid=program.pid)
        self.reader.wait_for(lambda sample: sample.windows == titles[:3:-1], "the first eight")

    def test_follows_a_change_of_title(self):
        window = desk.xterm("before").window()
        self.reader.wait_for_focus("before")
        window.retitle("after — 語")
        self.reader.wait_for_focus("after — 語")

    def test_reads_string_titles_as_latin_1(self):
        window = desk.xterm("x").window()
        xprop = ["xprop", "-id", window.number]
        subprocess.run([*xprop, "-remove", "_NET_WM_NAME"], check=True)
        subprocess.run([*xprop, "-f", "WM_NAME", "8s", "-set", "WM_NAME", b"Ren\xe9 M\xfcller"], check=True)
        self.reader.wait_for_focus("René Müller")

    def test_reads_a_title_of_any_length_whole(self):
        title = "Hargreave " * 250_000
        set_long_title(desk.xterm("x").window(), title)
        self.reader.wait_for(lambda sample: sample.focused == title, "the title of 2.5 MB")

    def test_reads_a_program_that_has_stopped(self):
        program = desk.xterm("not answering")
        program.window().focus()
        program.signal(signal.SIGSTOP)
        self.addCleanup(program.signal, signal.SIGCONT)
        self.reader.wait_for_focus("not answering")

    def test_nothing_is_frontmost_while_a_locker_that_lives_has_locked_the_screen(self):
        desk.xterm("Tobias Hargreave")
        self.reader.wait_for_focus("Tobias Hargreave")
        gone = ScreenLocker("org.freedesktop.ScreenSaver")
        gone.tell(True)
        gone.die()  # before anyone can ask for it
        for desktop in ("freedesktop", "gnome", "cinnamon", "mate", "xfce"):
            locker = ScreenLocker(f"org.{desktop}.ScreenSaver")
            locker.tell(True)
            locked = self.reader.wait_for(lambda sample: sample.nothing_is_frontmost, "a locked screen")
            self.assertTrue(locked.trusted)
            locker.tell(False)
            self.reader.wait_for_focus("Tobias Hargreave")
            locker.tell(True)
            self.reader.wait_for(lambda sample: sample.nothing_is_frontmost, "a locked screen")
            locker.die()
            self.reader.wait_for_focus("Tobias Hargreave")

    def test_nothing_is_frontmost_without_windows(self):
        sample = self.reader.sample()
        self.assertTrue(sample.nothing_is_frontmost)
        self.assertTrue(sample.trusted)

    def test_without_a_display_it_is_never_trusted(self):
        sample = self.start_reader(DISPLAY="").sample()
        self.assertTrue(sample.nothing_is_frontmost)
        self.assertFalse(sample.trusted)


class ServerAndWindowManager(unittest.TestCase):
    def setUp(self):
        self.server = XServer()
        self.addCleanup(self.server.close)
        self.addCleanup(desk.close_all)
        before = os.environ["DISPLAY"]
        self.addCleanup(os.environ.__setitem__, "DISPLAY", before)
        os.environ["DISPLAY"] = self.server.display
        self.reader = Reader()
        self.addCleanup(self.reader.close)

    def start_window_manager(self):
        manager = desk.start("openbox", "--sm-disable")
        desk.wait_until(window_manager_is_there, what="the window manager")
        return manager

    def show_window(self):
        manager = self.start_window_manager()
        desk.xterm("Tobias Hargreave")
        self.reader.wait_for_focus("Tobias Hargreave")
        return manager

    def test_nothing_is_frontmost_without_a_window_manager(self):
        program = desk.start("xterm", "-T", "unmanaged", "-e", "sleep", "infinity")
        desk.wait_until(
            lambda: subprocess.run(["xwininfo", "-name", "unmanaged"], capture_output=True).returncode == 0
        )
        self.assertTrue(program.is_running)
        sample = self.reader.sample()
        self.assertTrue(sample.nothing_is_frontmost)
        self.assertTrue(sample.trusted)

    def test_what_a_dead_window_manager_left_behind_does_not_count(self):
        manager = self.show_window()
        manager.signal(signal.SIGKILL)
        self.reader.wait_for(lambda sample: sample.nothing_is_frontmost, "no frontmost application")

    def test_a_server_that_does_not_answer_costs_a_quarter_of_a_second(self):
        self.show_window()
        self.server.signal(signal.SIGSTOP)
        sample = self.reader.sample()
        self.server.signal(signal.SIGCONT)
        self.assertTrue(sample.nothing_is_frontmost)
        self.assertGreaterEqual(sample.milliseconds, 249)
        self.assertLess(sample.milliseconds, 10_000, "it would wait for the server for ever")
        self.reader.wait_for_focus("Tobias Hargreave")

    def test_survives_windows_that_come_and_go(self):
        self.start_window_manager()
        for _ in range(3):
            desk.start("bash", "-c", "while xterm -T storm -e sleep 0.$((RANDOM % 4)); do :; done")
        samples = []

        def enough():
            samples.extend(self.reader.sample() for _ in range(50))
            return len(samples) > 500 and len([s for s in samples if s.focused]) > 50

        desk.wait_until(enough, 60, "five hundred samples of the storm")
        seen = {(s.app, s.focused) for s in samples if not s.nothing_is_frontmost}
        self.assertLessEqual(seen, {("XTerm", "storm"), ("XTerm", None)})

    def test_survives_the_end_of_the_server(self):
        self.show_window()
        self.server.close()
        for _ in range(3):
            self.assertTrue(self.reader.sample().nothing_is_frontmost)


if __name__ == "__main__":
    unittest.main()
