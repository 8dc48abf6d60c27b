"""Tells on standard output what happens, as it happens, in the time of the programs."""

import os
import subprocess
import time
from datetime import datetime, timedelta


class Transcript:
    """Lines with the time of day, and before each what the program's own watch log has to tell."""

    def __init__(self, clock, home):
        now = ["date", "+%s.%N"]
        morning = subprocess.run(
            now, env={**os.environ, **clock.environment}, capture_output=True, check=True
        ).stdout
        self._morning = datetime.fromtimestamp(float(morning))
        self._started = time.monotonic()
        self._factor = clock.factor
        self._home = home
        self._lines_read = 0

    def say(self, text):
        log = self._home.watch_log()
        for line in log[self._lines_read :]:
            stamp, _, message = line.partition(" ")
            print(f"{stamp}    watch log: {message}")
        self._lines_read = len(log)
        passed = timedelta(seconds=(time.monotonic() - self._started) * self._factor)
        print(f"{self._morning + passed:%H:%M:%S}  {text}", flush=True)
