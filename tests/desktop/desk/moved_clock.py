"""A wall clock that a test sets, for one program that knows nothing of it."""

import os
import subprocess
import time
from pathlib import Path


class MovedClock:
    """A program that is started with `environment` reads this clock; its timers go by the machine's own.

    That is what a program meets when somebody sets the clock: CLOCK_REALTIME jumps, CLOCK_MONOTONIC does not.
    """

    def __init__(self, folder, start):
        self._file = Path(folder) / "clock"
        self._ahead = 0
        self.set_to(start)
        inside = subprocess.check_output(["faketime", "-f", "+0", "printenv", "LD_PRELOAD"], text=True)
        self.environment = {
            "LD_PRELOAD": inside.strip(),
            "FAKETIME_TIMESTAMP_FILE": str(self._file),
            "FAKETIME_NO_CACHE": "1",
            "FAKETIME_DONT_FAKE_MONOTONIC": "1",
        }

    def now(self):
        """Seconds since 1970."""
        return time.time() + self._ahead

    def move(self, seconds):
        self._ahead += round(seconds)
        new = self._file.with_suffix(".new")
        new.write_text(f"{self._ahead:+d}\n")
        os.replace(new, self._file)

    def set_to(self, moment):
        """To a moment with its time zone."""
        self.move(moment.timestamp() - self.now())
