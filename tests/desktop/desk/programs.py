"""Starting and ending real programs."""

import os
import subprocess
import tempfile

from desk import windows
from desk.waiting import LIMIT, wait_until

_running = []


class Program:
    """A process and the text it has printed so far (both streams)."""

    def __init__(self, arguments, environment, stdin=subprocess.DEVNULL):
        self.arguments = [str(a) for a in arguments]
        self._log = tempfile.TemporaryFile()
        self._process = subprocess.Popen(
            self.arguments,
            env={**os.environ, **environment},
            stdin=stdin,
            stdout=self._log,
            stderr=subprocess.STDOUT,
        )
        self.pid = self._process.pid
        _running.append(self)

    @property
    def output(self):
        # pread: the file's position belongs to the program that is still writing.
        return os.pread(self._log.fileno(), 1 << 24, 0).decode("utf-8", "replace")

    @property
    def is_running(self):
        return self._process.poll() is None

    def wait(self, timeout=LIMIT):
        """Waits for its end and returns the exit code."""
        return self._process.wait(timeout)

    def signal(self, number):
        self._process.send_signal(number)

    def close(self):
        """Ends it: TERM, two seconds of patience, KILL."""
        if self.is_running:
            self._process.terminate()
            try:
                self._process.wait(2)
            except subprocess.TimeoutExpired:
                self._process.kill()
                self._process.wait()
        if self in _running:
            _running.remove(self)
            self._log.close()

    def wait_for_output(self, text, timeout=LIMIT):
        wait_until(lambda: text in self.output, timeout, f"output {text!r} of {self.arguments[0]}")

    def window(self, title=None, timeout=LIMIT):
        """Its window, as soon as it is there; with exactly this title if one is given."""
        return windows.wait_for(title, pid=self.pid, timeout=timeout)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()


def start(*arguments, environment=None):
    return Program(arguments, environment or {})


def running():
    """The programs that were started here and have not been closed."""
    return set(_running)


def close_all(but=()):
    """Ends every other program started here, the last one first; for addCleanup."""
    for program in list(reversed(_running)):
        if program not in but:
            program.close()


def _with_window(program, title):
    program.window(title)
    return program


_SET_TITLE_AND_WAIT = 'printf "\\033]2;%s\\007" "$0"; exec sleep infinity'


def xterm(title):
    """A program without any accessibility; returns when its window is there, as the next two do.

    The title is set as shells do it: the option -T would set no _NET_WM_NAME.
    """
    return _with_window(start("xterm", "-u8", "-e", "sh", "-c", _SET_TITLE_AND_WAIT, title), title)


def zenity(title, text="text"):
    """A GTK dialogue with one button, "OK"."""
    return _with_window(start("zenity", "--info", "--title", title, "--text", text), title)


def mousepad(path):
    """A GTK editor; its window's title is the path, and " - Mousepad"."""
    program = start("mousepad", "--disable-server", path)
    program.window()
    return program
