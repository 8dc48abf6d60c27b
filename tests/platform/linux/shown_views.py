"""Runs show-views, which shows the product's own views, and reads what it prints."""

import os
import subprocess

from desk import Program, controls, wait_until

PROGRAM = os.environ.get("SHOW_VIEWS", "")
QUICK_NOTE = "VELK — quick note"


class ShownViews(Program):
    def __init__(self, *options, **environment):
        super().__init__([PROGRAM, *options], environment, stdin=subprocess.PIPE)

    @property
    def lines(self):
        return self.output.splitlines()

    def wait_for(self, line):
        wait_until(lambda: line in self.lines, what=f"the line {line!r}")

    def do(self, command):
        """Has the program carry out a command, and waits until it has."""
        before = self.lines.count(f"done {command}")
        self._process.stdin.write(f"{command}\n".encode())
        self._process.stdin.flush()
        wait_until(lambda: self.lines.count(f"done {command}") > before, what=f"the command {command}")

    def window(self):
        return super().window(QUICK_NOTE)

    def controls(self):
        return controls.of(self)

    def close(self):
        super().close()
        self._process.stdin.close()
