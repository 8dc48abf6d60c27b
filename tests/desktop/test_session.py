#!/usr/bin/python3
"""The private desktops themselves: they come up whole, answer with the command's code, leave nothing."""

import os
import pwd
import signal
import socket
import subprocess
import tempfile
import unittest
from pathlib import Path

from desk.waiting import wait_until

FOLDER = Path(__file__).resolve().parent
LIMIT = 120  # seconds for a whole session on a loaded machine
OUTER_DESKTOP = {
    "DISPLAY": ":77",
    "WAYLAND_DISPLAY": "outer",
    "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere/outer",
    "XDG_RUNTIME_DIR": "/nowhere/outer",
    "XDG_CONFIG_HOME": "/nowhere/outer",
    "AT_SPI_BUS_ADDRESS": "unix:path=/nowhere/outer",
    "SESSION_MANAGER": "local/outer",
    "LC_ALL": "outer",
}
IDENTITY = 'echo "$NOTEWICK_SESSION_MARK $HOME $DISPLAY"; '
# Everything that the command of a session sees, and two programs that it leaves running.
WHOLE = (
    "gdbus call --session -d org.freedesktop.DBus -o /org/freedesktop/DBus -m org.freedesktop.DBus.ListNames; "
    "xprop -root _NET_SUPPORTING_WM_CHECK; env | grep outer; cat copied.txt; id -u; "
    "echo logged >$NOTEWICK_SESSION_LOGS/own; "
    "setsid xterm >/dev/null 2>&1 & setsid sleep 1000 >/dev/null 2>&1 & exit 7"
)


def processes_with(mark):
    wanted = f"NOTEWICK_SESSION_MARK={mark}".encode()

    def carries_it(environment):
        try:
            return wanted in environment.read_bytes().split(b"\0")
        except OSError:
            return False

    return [path.parent.name for path in Path("/proc").glob("[0-9]*/environ") if carries_it(path)]


def is_orphan(display):
    """The socket of an X server is there and nobody listens; another session may have the number by now."""
    with socket.socket(socket.AF_UNIX) as client:
        try:
            client.connect("/tmp/.X11-unix/X" + display.strip(":"))
        except FileNotFoundError:
            return False
        except ConnectionRefusedError:
            return True
        return False


class Run:
    """A session under way, or over."""

    def __init__(self, program, *options, script, environment=None):
        self.process = subprocess.Popen(
            [FOLDER / program, *options, "--", "bash", "-c", IDENTITY + script],
            env={**os.environ, **(environment or {})},
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            text=True,
        )
        self.mark, self.home, self.display = (self.process.stdout.readline().split() + [""] * 3)[:3]

    def finish(self):
        self.output, self.errors = self.process.communicate(timeout=LIMIT)
        self.code = self.process.returncode
        return self


class CommonBehaviour:
    """What both kinds of desktop promise."""

    options = ()

    @classmethod
    def setUpClass(cls):
        folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.logs = folder / "logs"
        (folder / "copied.txt").write_text("only root reads this\n")
        options = [option.format(folder=folder) for option in cls.options]
        cls.run_ = Run(
            cls.program, "--keep", cls.logs, *options, script=WHOLE, environment=OUTER_DESKTOP
        ).finish()

    def assert_nothing_is_left(self, run):
        self.assertTrue(run.mark)
        self.assertEqual(processes_with(run.mark), [])
        self.assertFalse(Path(run.home).parent.exists())
        # A server that is just starting does not listen yet, either.
        wait_until(lambda: not is_orphan(run.display), what="the end of the display's socket")
        self.assertEqual([user.pw_name for user in pwd.getpwall() if user.pw_dir == run.home], [])

    def test_is_a_whole_desktop_that_hides_the_one_around_it(self):
        for name in self.services:
            self.assertIn(f"'{name}'", self.run_.output)
        self.assertIn("window id #", self.run_.output)
        self.assertNotIn("outer", self.run_.output)

    def test_passes_the_exit_code_through_and_leaves_nothing(self):
        self.assertEqual(self.run_.code, 7, self.run_.errors)
        self.assert_nothing_is_left(self.run_)

    def test_keeps_the_logs(self):
        self.assertEqual((self.logs / "own").read_text(), "logged\n")
        self.assertTrue((self.logs / "notifications.log").exists())

    def test_a_signal_ends_it_and_leaves_nothing(self):
        run = Run(self.program, script="sleep 1000; echo not reached")
        self.assertNotEqual(processes_with(run.mark), [])
        run.process.send_signal(signal.SIGTERM)
        run.finish()
        self.assertEqual((run.code, run.output), (143, ""))
        self.assert_nothing_is_left(run)

    def test_a_part_that_does_not_come_up_is_97_with_its_log(self):
        with tempfile.TemporaryDirectory() as folder:
            os.chmod(folder, 0o755)
            stub = Path(folder, self.notification_server)
            stub.write_text("#!/bin/sh\necho no fonts here; exit 1\n")
            stub.chmod(0o755)
            path = f"{folder}:{os.environ['PATH']}"
            run = Run(self.program, script="echo not reached", environment={"PATH": path}).finish()
        self.assertEqual((run.code, run.output), (97, ""))
        self.assertIn("notifications did not come up", run.errors)
        self.assertIn("no fonts here", run.errors)

    def test_refuses_a_wrong_option(self):
        run = subprocess.run(
            [FOLDER / self.program, "--tray", "other", "true"], capture_output=True, check=False
        )
        self.assertEqual(run.returncode, 96)
        self.assertIn(b"usage", run.stderr)


DESKTOP_SERVICES = ("org.freedesktop.Notifications", "org.kde.StatusNotifierWatcher", "org.a11y.Bus")


class XSession(CommonBehaviour, unittest.TestCase):
    program = "session"
    notification_server = "dunst"
    services = (*DESKTOP_SERVICES, "org.freedesktop.secrets")

    def test_a_part_left_out_is_unknown_to_the_bus(self):
        options = ("--notify", "none", "--keyring", "none", "--tray", "none")
        run = Run(self.program, *options, script="notify-send hello; secret-tool lookup a b").finish()
        self.assertNotEqual(run.code, 0)
        self.assertEqual(run.errors.count("ServiceUnknown"), 1, run.errors)
        self.assertIn("org.freedesktop.secrets was not provided", run.errors)

    def test_a_finer_screen_is_one_for_every_program(self):
        options = ("--scale", "2", "--notify", "none", "--keyring", "none", "--tray", "none")
        run = Run(self.program, *options, script="xrdb -query; echo GTK $GDK_SCALE").finish()
        self.assertIn("Xft.dpi:\t192\n", run.output)
        self.assertIn("GTK 2\n", run.output)


class SwaySession(CommonBehaviour, unittest.TestCase):
    program = "sway-session"
    notification_server = "mako"
    services = DESKTOP_SERVICES
    options = ("--copy", "{folder}/copied.txt")

    def test_belongs_to_an_ordinary_user_who_reads_what_was_copied(self):
        self.assertIn("\nonly root reads this\n", self.run_.output)
        self.assertNotIn("\n0\n", self.run_.output)


if __name__ == "__main__":
    unittest.main()
