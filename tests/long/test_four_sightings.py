#!/usr/bin/python3
"""Work that was seen in exactly four samples, the fewest that span 45 seconds, is caught every time."""

import itertools
import unittest
from datetime import datetime

import desk
from desk.story import Story

ENOUGH_SIGHTINGS = 4
SAMPLE_INTERVAL = 15  # seconds; the log writes whole ones
WANTED = 20  # participants; four have each piece of work in common
SESSION_ENDS = 150  # seconds; ten minutes of the fast clock are sixty
# Sixteen pieces of work, of which a busy machine may spoil eleven.
FIRST_NAMES = ("Ada", "Bruno", "Chiara", "Derek", "Elif", "Farid", "Gita", "Henk")
FIRST_NAMES += ("Ines", "Jonas", "Kalle", "Leyla", "Marek", "Noor", "Olga", "Pavel")
LAST_NAMES = ("Ashdown", "Brandt", "Castellani", "Dvorak")


class FourSightings(Story):
    fast = True
    factor = 10  # a sample comes after 1.5 seconds: time enough to change a title before the next one
    participants = [" ".join(name) for name in itertools.product(FIRST_NAMES, LAST_NAMES)]

    def sightings(self, name):
        """The indices of the lines of the log that tell of this name."""
        return [
            i for i, line in enumerate(self.home.watch_log()) if f'"{name}"' in line.partition("matches=")[2]
        ]

    def show(self, window, title):
        """Gives the window this title; returns when a sample has seen it."""
        window.retitle(title)
        desk.wait_until(
            lambda: f'titles=["{title}"]' in self.home.watch_log()[-1], what=f"a sample of {title!r}"
        )

    def work_on(self, window, names):
        """Has these names in the window's title for four samples.

        False where the machine was too busy for four in a row: one was lost or late, or the title stayed for a fifth.
        """
        self.show(window, "Case conference: " + ", ".join(names))
        desk.wait_until(
            lambda: len(self.sightings(names[0])) >= ENOUGH_SIGHTINGS, what=f"four sightings of {names}"
        )
        self.show(window, "Lunch")
        seen = self.sightings(names[0])
        with_the_one_before = self.home.watch_log()[seen[0] - 1 : seen[-1] + 1]
        times = [datetime.strptime(line.split()[0], "%H:%M:%S") for line in with_the_one_before]
        gaps = [(later - earlier).total_seconds() for earlier, later in itertools.pairwise(times)]
        return len(seen) == ENOUGH_SIGHTINGS and all(abs(gap - SAMPLE_INTERVAL) <= 1 for gap in gaps)

    def test_make_twenty_pieces_of_work(self):
        program = self.start_signed_in()
        window = desk.xterm("work").window()
        window.focus()
        self.show(window, "Lunch")
        seen_four_times = []
        for _, piece in itertools.groupby(self.participants, lambda name: name.split()[0]):
            names = list(piece)
            if self.work_on(window, names):
                seen_four_times += names
            if len(seen_four_times) == WANTED:
                break
        self.assertEqual(len(seen_four_times), WANTED)

        def not_caught():
            return set(seen_four_times) - {
                pending["participant"] for pending in self.home.list("pending.json")
            }

        desk.wait_until(lambda: not not_caught(), SESSION_ENDS, "the end of all work")
        entries = [label for label in program.menu() if label.startswith("Log: ")]
        for name in seen_four_times:
            self.assertEqual(sum(label.startswith(f"Log: {name} (") for label in entries), 1, name)


if __name__ == "__main__":
    unittest.main()
