#!/usr/bin/python3
"""The private desktops themselves: they come up whole, answer with the command's code, leave nothing."""

import os
import pwd
import signal
import socket
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

FOLDER = Path(__file__).resolve().parent
LIMIT = 60  # seconds
OUTER_DESKTOP = {
    "DISPLAY": ":77",
    "WAYLAND_DISPLAY": "outer",
    "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere/outer",
    "XDG_RUNTIME_DIR": "/nowhere/outer",
    "XDG_CONFIG_HOME": "/nowhere/outer",
    "XDG_DATA_DIRS": "/nowhere/outer",
    "AT_SPI_BUS_ADDRESS": "unix:path=/nowhere/outer",
    "QT_QPA_PLATFORM": "outer",
}
IDENTITY = 'echo "$NOTEWICK_SESSION_MARK $HOME $DISPLAY"; '
OWNED_NAMES = (
    "gdbus call --session -d org.freedesktop.DBus -o /org/freedesktop/DBus "
    "-m org.freedesktop.DBus.ListNames; "
)


def processes_with(mark):
    wanted = f"NOTEWICK_SESSION_MARK={mark}".encode()
    found = []
    for environment in Path("/proc").glob("[0-9]*/environ"):
        try:
            if wanted in environment.read_bytes().split(b"\0"):
                found.append(environment.parent.name)
        except OSError:
            pass
    return found


def is_alive(pid):
    """Not so for one that has ended and waits for its parent to notice."""
    try:
        return Path("/proc", pid, "stat").read_text().rpartition(")")[2].split()[0] != "Z"
    except OSError:
        return False


def is_orphan(display):
    """The socket of an X server is there without a server; another session may have the number by now."""
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

    def __init__(self, program, *options, script="true", environment=None, stdin=subprocess.DEVNULL):
        self.process = subprocess.Popen(
            [FOLDER / program, *options, "--", "bash", "-c", IDENTITY + script],
            env={**os.environ, **(environment or {})},
            stdin=stdin,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            text=True,
        )
        self.output = self.errors = self.mark = self.home = self.display = ""

    def read_identity(self):
        self.mark, self.home, self.display = self.process.stdout.readline().split()
        return self

    def finish(self, stdin=None):
        output, self.errors = self.process.communicate(stdin, timeout=LIMIT)
        if not self.mark and output:
            identity, _, output = output.partition("\n")
            self.mark, self.home, self.display = identity.split()
        self.output = output
        return self

    @property
    def code(self):
        return self.process.returncode


class SessionTest(unittest.TestCase):
    program = "session"

    def run_session(self, *options, **keywords):
        return Run(self.program, *options, **keywords).finish()

    def assert_nothing_is_left(self, run):
        self.assertTrue(run.mark)
        self.assertEqual(processes_with(run.mark), [])
        self.assertFalse(Path(run.home).parent.exists())
        self.assertFalse(is_orphan(run.display))

    def stub(self, name, text):
        """A folder for PATH in which a program of this name is a shell script."""
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        os.chmod(folder.name, 0o755)
        script = Path(folder.name, name)
        script.write_text("#!/bin/sh\n" + text)
        script.chmod(0o755)
        return {"PATH": f"{folder.name}:{os.environ['PATH']}"}


class CommonBehaviour:
    """What both kinds of desktop promise."""

    def test_passes_the_exit_code_through(self):
        run = self.run_session(script="exit 7")
        self.assertEqual(run.code, 7)
        self.assert_nothing_is_left(run)

    def test_ends_what_the_command_left_running(self):
        daemons = "for d in 'xterm' 'sleep 1000'; do setsid $d >/dev/null 2>&1 & pids+=\" $!\"; done; "
        run = self.run_session(script=daemons + "sleep 0.3; kill -0 $pids && echo $pids")
        left_running = run.output.split()
        self.assertEqual(len(left_running), 2)
        self.assertEqual([pid for pid in left_running if is_alive(pid)], [])
        self.assert_nothing_is_left(run)

    def test_hides_the_desktop_around_it(self):
        run = self.run_session(script="env | grep -c outer", environment=OUTER_DESKTOP)
        self.assertEqual(run.output.strip(), "0")

    def test_a_part_that_does_not_come_up_is_97_with_its_log(self):
        stub = self.stub(self.notification_server, "echo no fonts here; exit 1\n")
        started = time.monotonic()
        run = self.run_session(environment=stub)
        self.assertEqual(run.code, 97)
        self.assertIn("notifications did not come up", run.errors)
        self.assertIn("no fonts here", run.errors)
        self.assertEqual(run.output, "")
        self.assertLess(time.monotonic() - started, 25)

    def test_a_signal_ends_it_at_once(self):
        run = Run(self.program, script="sleep 1000; echo not reached").read_identity()
        self.assertNotEqual(processes_with(run.mark), [])
        run.process.send_signal(signal.SIGTERM)
        run.finish()
        self.assertEqual(run.code, 143)
        self.assertEqual(run.output, "")
        self.assert_nothing_is_left(run)

    def test_a_command_that_takes_too_long_is_ended(self):
        run = self.run_session("--timeout", "0.2", script="sleep 1000")
        self.assertEqual(run.code, 124)
        self.assert_nothing_is_left(run)

    def test_keeps_the_logs_if_asked(self):
        with tempfile.TemporaryDirectory() as folder:
            self.run_session("--keep", folder, script="echo mine >$NOTEWICK_SESSION_LOGS/own.txt")
            self.assertEqual(Path(folder, "own.txt").read_text(), "mine\n")
            self.assertTrue(Path(folder, "notifications.log").exists())

    def test_refuses_a_wrong_option(self):
        run = subprocess.run([FOLDER / self.program, "--tray", "other", "true"], capture_output=True, check=False)
        self.assertEqual(run.returncode, 96)
        self.assertIn(b"usage", run.stderr)


class XSession(CommonBehaviour, SessionTest):
    program = "session"
    notification_server = "dunst"

    def test_is_a_whole_desktop(self):
        run = self.run_session(script=OWNED_NAMES + "xprop -root _NET_SUPPORTING_WM_CHECK; cat")
        for name in ("Notifications", "secrets"):
            self.assertIn(f"'org.freedesktop.{name}'", run.output)
        self.assertIn("'org.kde.StatusNotifierWatcher'", run.output)
        self.assertIn("'org.a11y.Bus'", run.output)
        self.assertIn("window id #", run.output)

    def test_leaves_parts_out(self):
        run = self.run_session("--tray", "none", "--notify", "none", "--keyring", "none", script=OWNED_NAMES)
        for name in ("Notifications", "secrets", "StatusNotifierWatcher"):
            self.assertNotIn(name, run.output)

    def test_a_service_left_out_is_unknown_to_the_bus(self):
        options = ("--notify", "none", "--keyring", "none")
        run = self.run_session(*options, script="notify-send hello; secret-tool lookup a b")
        self.assertNotEqual(run.code, 0)
        self.assertEqual(run.errors.count("ServiceUnknown"), 1, run.errors)
        self.assertIn("org.freedesktop.secrets was not provided", run.errors)

    def test_hands_its_input_to_the_command(self):
        run = Run(self.program, script="cat", stdin=subprocess.PIPE).finish(stdin="one line\n")
        self.assertEqual(run.output, "one line\n")

    def test_several_at_once_do_not_meet(self):
        runs = [Run(self.program, script="sleep 0.5; wmctrl -l | wc -l") for _ in range(3)]
        finished = [run.finish() for run in runs]
        self.assertEqual([run.code for run in finished], [0, 0, 0])
        self.assertEqual(len({run.display for run in finished}), 3)
        for run in finished:
            self.assert_nothing_is_left(run)


class SwaySession(CommonBehaviour, SessionTest):
    program = "sway-session"
    notification_server = "mako"

    def assert_nothing_is_left(self, run):
        super().assert_nothing_is_left(run)
        self.assertEqual([user.pw_name for user in pwd.getpwall() if user.pw_dir == run.home], [])

    def test_is_a_whole_desktop_of_an_ordinary_user(self):
        run = self.run_session(script=OWNED_NAMES + "id -u; swaymsg -t get_seats; xprop -root | wc -l")
        self.assertEqual(run.code, 0, run.errors)
        self.assertIn("'org.freedesktop.Notifications'", run.output)
        self.assertIn("'org.kde.StatusNotifierWatcher'", run.output)
        self.assertIn("'org.a11y.Bus'", run.output)
        self.assertNotIn("\n0\n", run.output)

    def test_copies_files_for_its_user(self):
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, "secret.txt").write_text("only root reads this")
            run = self.run_session("--copy", Path(folder, "secret.txt"), script="cat secret.txt")
            self.assertEqual(run.output, "only root reads this")


if __name__ == "__main__":
    unittest.main()
