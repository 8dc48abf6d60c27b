"""Asks print-titles, which reads the screen with the product's own code."""

import json
import os
import subprocess
import tempfile
from pathlib import Path

from desk import wait_until
from desk.waiting import LIMIT

PROGRAM = os.environ.get("PRINT_TITLES", "")
if not os.access(PROGRAM, os.X_OK):
    PROGRAM = os.path.join(os.getcwd(), "print-titles")


def text_file(name):
    path = Path(tempfile.mkdtemp(), name)
    path.touch()
    return path


class Sample:
    def __init__(self, answer):
        self.trusted = answer["trusted"]
        self.milliseconds = answer["milliseconds"]
        self.nothing_is_frontmost = answer["frontmost"] is None
        frontmost = answer["frontmost"] or {}
        self.app = frontmost.get("app")
        self.focused = frontmost.get("focused")
        self.windows = frontmost.get("windows", [])

    def __repr__(self):
        return f"<{self.app}: {self.focused!r} of {self.windows} in {self.milliseconds:.1f} ms>"


class Reader:
    """One reader that lives through a test, as it does in the product."""

    def __init__(self, *options, **environment):
        self._process = subprocess.Popen(
            [PROGRAM, *options],
            env={**os.environ, "QT_QPA_PLATFORM": "offscreen", **environment},
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            text=True,
        )
        self.pid = self._process.pid

    def _answer_to(self, line):
        self._process.stdin.write(line + "\n")
        self._process.stdin.flush()
        return Sample(json.loads(self._process.stdout.readline()))

    def sample(self):
        return self._answer_to("sample")

    def ask_for_leave(self):
        return self._answer_to("ask")

    def wait_for(self, condition, what):
        """Samples until the condition holds of one, and returns that one."""

        def fitting():
            sample = self.sample()
            return sample if condition(sample) else None

        return wait_until(fitting, what=what)

    def wait_for_focus(self, title):
        return self.wait_for(lambda sample: sample.focused == title, f"a sample with {title!r} in front")

    def close(self):
        """Ends it in good order; whatever it died of, or lost, before is a failure of the test."""
        self._process.stdin.close()
        self._process.stdout.close()
        if self._process.wait(LIMIT) != 0:
            raise AssertionError(f"print-titles ended with {self._process.returncode}")
