#!/usr/bin/python3
"""Work that was seen in exactly four samples, the fewest that span 45 seconds, is caught every time."""

import itertools
import unittest

import desk
from desk.story import Story

ENOUGH_SIGHTINGS = 4
WANTED = 20  # participants; four have each piece of work in common
SESSION_ENDS = 150  # seconds; ten minutes of the fast clock are sixty
FIRST_NAMES = ("Ada", "Bruno", "Chiara", "Derek", "Elif", "Farid", "Gita", "Henk")
LAST_NAMES = ("Ashdown", "Brandt", "Castellani", "Dvorak")


class FourSightings(Story):
    fast = True
    factor = 10  # a sample comes after 1.5 seconds: time enough to change a title before the next one
    participants = [" ".join(name) for name in itertools.product(FIRST_NAMES, LAST_NAMES)]

    def sightings(self, name):
        return sum(f'"{name}"' in line.partition("matches=")[2] for line in self.home.watch_log())

    def show(self, window, title):
        """Gives the window this title; returns when a sample has seen it."""
        window.retitle(title)
        desk.wait_until(lambda: f'titles=["{title}"]' in self.home.watch_log()[-1], what=f"a sample of {title!r}")

    def work_on(self, window, names):
        """Has these names in the window's title for four samples; false when the machine was too slow for that."""
        self.show(window, "Case conference: " + ", ".join(names))
        desk.wait_until(lambda: self.sightings(names[0]) >= ENOUGH_SIGHTINGS, what=f"four sightings of {names}")
        self.show(window, "Lunch")
        return self.sightings(names[0]) == ENOUGH_SIGHTINGS

    def test_make_twenty_pieces_of_work(self):
        program = self.start_signed_in()
        window = desk.xterm("Lunch").window()
        window.focus()
        seen_four_times = []
        for _, piece in itertools.groupby(self.participants, lambda name: name.split()[0]):
            names = list(piece)
            if self.work_on(window, names):
                seen_four_times += names
            if len(seen_four_times) == WANTED:
                break
        self.assertEqual(len(seen_four_times), WANTED)

        def not_caught():
            return set(seen_four_times) - {pending["participant"] for pending in self.home.list("pending.json")}

        desk.wait_until(lambda: not not_caught(), SESSION_ENDS, "the end of all work")
        entries = [label for label in program.menu() if label.startswith("Log: ")]
        for name in seen_four_times:
            self.assertEqual(sum(label.startswith(f"Log: {name} (") for label in entries), 1, name)


if __name__ == "__main__":
    unittest.main()
