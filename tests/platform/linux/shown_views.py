"""Runs show-views, which shows the product's own views, and reads what it prints."""

import os
import subprocess
import tempfile

from desk import controls, wait_until, windows
from desk.waiting import LIMIT

PROGRAM = os.environ.get("SHOW_VIEWS", "")
QUICK_NOTE = "VELK — quick note"


class ShownViews:
    def __init__(self, *options, **environment):
        self.arguments = [PROGRAM, *options]
        self._printed = tempfile.TemporaryFile()
        self._process = subprocess.Popen(
            self.arguments,
            env={**os.environ, **environment},
            stdin=subprocess.PIPE,
            stdout=self._printed,
            stderr=subprocess.STDOUT,
            text=True,
        )
        self.pid = self._process.pid

    @property
    def lines(self):
        return os.pread(self._printed.fileno(), 1 << 20, 0).decode().splitlines()

    def wait_for(self, line):
        wait_until(lambda: line in self.lines, what=f"the line {line!r}")

    def do(self, command):
        """Has the program carry out a command, and waits until it has."""
        before = self.lines.count(f"done {command}")
        self._process.stdin.write(command + "\n")
        self._process.stdin.flush()
        wait_until(lambda: self.lines.count(f"done {command}") > before, what=f"the command {command}")

    def window(self, title=QUICK_NOTE):
        return windows.wait_for(title, pid=self.pid)

    def controls(self):
        return controls.of(self)

    def wait(self):
        return self._process.wait(LIMIT)

    def close(self):
        if self._process.poll() is None:
            self._process.terminate()
        self._process.wait(LIMIT)
        self._process.stdin.close()
        self._printed.close()
