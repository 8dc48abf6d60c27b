"""Tells on standard output what happens, as it happens, in the time of the programs."""

import os
import subprocess
import time
from datetime import datetime, timedelta

from desk.waiting import LIMIT, wait_until


class Transcript:
    """Lines with the time of day, and between them the program's own watch log."""

    def __init__(self, clock, home):
        told = subprocess.run(
            ["date", "+%s.%N"], env={**os.environ, **clock.environment}, capture_output=True, text=True, check=True
        )
        self._started = time.monotonic()
        self._morning = datetime.fromtimestamp(float(told.stdout))
        self._factor = clock.factor
        self._home = home
        self._lines_read = 0
        self._last_message, self._repeats = "", 0

    def say(self, text):
        """A line of the teller's own."""
        self.follow()
        self._end_repeats()
        passed = timedelta(seconds=(time.monotonic() - self._started) * self._factor)
        print(f"{self._morning + passed:%H:%M:%S}  {text}", flush=True)

    def follow(self):
        """What the watch log has to tell since the last time; the same again and again is counted only."""
        lines = self._home.watch_log()
        for line in lines[self._lines_read :]:
            stamp, _, message = line.partition(" ")
            if message == self._last_message:
                self._repeats += 1
                continue
            self._end_repeats()
            self._last_message = message
            print(f"{stamp}    watch log: {message}", flush=True)
        self._lines_read = len(lines)

    def _end_repeats(self):
        if self._repeats:
            print(f"{'':10}  ... and the same {self._repeats} more times", flush=True)
        self._repeats = 0

    def until(self, condition, what, timeout=LIMIT):
        """Waits for the condition, and tells on."""

        def told_and_true():
            self.follow()
            return condition()

        return wait_until(told_and_true, timeout, what)
