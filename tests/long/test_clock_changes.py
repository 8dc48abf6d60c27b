#!/usr/bin/python3
"""The clock is set, the machine suspended, the time zone changed, while the program runs at its own pace.

The formulas are proven on the fakes (ClockChanges). Here the question is whether the real timers, the real
clock and the files go on: a sample each 15 seconds, nothing that hangs, nothing twice.
"""

import os
import shutil
import signal
import subprocess
import tempfile
import time
import unittest
from datetime import datetime
from pathlib import Path
from zoneinfo import ZoneInfo

import desk
from desk.story import Story

NAME = "Tobias Hargreave"
SAMPLE_INTERVAL = 15  # seconds
ENOUGH_SIGHTINGS = 4
MINUTE, HOUR, DAY = 60, 3600, 86400
YEAR = 365 * DAY
ZONES = Path("/usr/share/zoneinfo")
BERLIN = ZoneInfo("Europe/Berlin")


START = datetime(2027, 2, 1, 10, tzinfo=BERLIN)


class MovedClock:
    """A wall clock that a test sets. A program that is started with `environment` reads it and knows nothing of
    that; its timers go by the machine's own clock.

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


class ClockChanges(Story):
    @classmethod
    def make_clock(cls):
        return MovedClock(
            tempfile.mkdtemp(dir=cls.folder), START
        ).environment  # of the service, which is right

    def setUp(self):
        super().setUp()
        folder = tempfile.mkdtemp(dir=self.folder)
        self.zone = Path(folder, "zone")
        self.lives_in("Europe/Berlin")
        self.moved = MovedClock(folder, START)
        self.program = self.start_signed_in(**self.moved.environment, TZ=f":{self.zone}")
        self.window = desk.xterm("Lunch").window()
        self.window.focus()

    def lives_in(self, name):
        shutil.copy(ZONES / name, self.zone.with_suffix(".new"))
        self.zone.with_suffix(".new").replace(self.zone)

    def move(self, seconds):
        self.moved.move(seconds)

    def suspend(self, seconds):
        """The program stands still, and finds the clock moved when it goes on."""
        self.program.signal(signal.SIGSTOP)
        self.move(seconds)
        self.program.signal(signal.SIGCONT)

    def samples(self, count, title=None):
        """Waits for so many more samples, of this title if one is given; returns their lines."""
        if title:
            self.window.retitle(title)
        before = self.home.watch_log()

        def new():
            lines = self.home.watch_log()[len(before) :]
            return [line for line in lines if not title or f'"{title}"' in line]

        limit = (count + 4) * SAMPLE_INTERVAL
        desk.wait_until(lambda: len(new()) >= count, limit, f"{count} samples")
        return new()

    def works(self):
        return self.samples(ENOUGH_SIGHTINGS, NAME)

    def caught(self):
        if not self.home.text("pending.json"):
            return []
        return [(each["day"], each["observedMinutes"]) for each in self.home.list("pending.json")]

    def wait_for_caught(self, *expected):
        self.samples(2, "Lunch")
        self.assertEqual(self.caught(), list(expected))

    def test_the_clock_is_set(self):
        self.works()
        self.move(HOUR)
        self.wait_for_caught(("2027-02-01", 1))
        self.works()
        self.move(-YEAR)
        self.wait_for_caught(("2027-02-01", 1))
        self.program.widget.write_note("Called the school")
        self.move(YEAR + HOUR)
        self.wait_for_caught(("2027-02-01", 2))
        desk.wait_until(lambda: len(self.service.notes()) == 1, 2 * MINUTE, "the note")
        self.samples(4)
        self.assertEqual(len(self.service.notes()), 1)
        self.assertEqual(self.program.quit(), 0)

    def test_the_machine_is_suspended(self):
        self.works()
        self.suspend(10 * MINUTE)
        self.wait_for_caught(("2027-02-01", 1))
        self.works()
        self.suspend(14 * HOUR)
        self.wait_for_caught(("2027-02-01", 1), ("2027-02-02", 1))
        self.assertEqual(self.program.quit(), 0)

    def test_both_nights_of_summer_time_and_a_journey(self):
        for moment, before, after in (
            (datetime(2027, 3, 28, 1, 59, 10, tzinfo=BERLIN), "01:59", "03:00"),
            (datetime(2027, 10, 31, 2, 59, 10, tzinfo=BERLIN), "02:59", "02:00"),
        ):
            self.moved.set_to(moment)
            self.samples(1, "Lunch")
            times = [line[:5] for line in self.works()]
            self.assertEqual((times[0], times[-1]), (before, after))
        self.move(HOUR)
        self.wait_for_caught(("2027-10-31", 2))
        self.lives_in("Asia/Kolkata")
        there = datetime.fromtimestamp(self.moved.now(), ZoneInfo("Asia/Kolkata"))
        self.assertEqual(self.samples(2)[-1][:2], f"{there.hour:02}")
        self.assertEqual(self.program.quit(), 0)


if __name__ == "__main__":
    unittest.main()
