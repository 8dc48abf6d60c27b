#!/usr/bin/env python3
"""The benchmarks' statistics, and the page that they are written to; nothing is measured here."""

import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "bench"))
from benchmarks.document import Page, line_of, spoken
from benchmarks.rows import Group, Line, Row
from benchmarks.series import Reading, at_most, at_most_above, at_most_times, never_above, ratio_of

READINGS = [Reading(2, 1), Reading(9, 3), Reading(4, 4)]  # medians 4 and 3; ratios 2, 3, 1


class Statistics(unittest.TestCase):
    def test_ratios_are_taken_round_by_round_where_there_is_something_beside(self):
        ratios = ratio_of(READINGS)
        self.assertEqual((ratios.minimum, ratios.median, ratios.maximum), (1, 2, 3))
        self.assertIsNone(ratio_of([Reading(2)]))
        self.assertIsNone(ratio_of([Reading(2, 0)]))

    def test_a_goal_is_kept_by_the_median_or_by_every_round(self):
        for kept in (at_most(4), never_above(9), at_most_times(2), at_most_above(1)):
            self.assertTrue(kept.is_met_by(READINGS), kept)
        for missed in (at_most(3.9), never_above(8.9), at_most_times(1.9), at_most_above(0.9)):
            self.assertFalse(missed.is_met_by(READINGS), missed)

    def test_numbers_keep_three_digits(self):
        numbers = [0, 0.0012345, 0.0234, 0.5, 1.234, 12.34, 123.4, 1234.5]
        expected = ["0", "0.00123", "0.0234", "0.500", "1.23", "12.3", "123", "1,234"]
        self.assertEqual([spoken(number) for number in numbers], expected)


def row(name, goal=None, reason=""):
    return Row(name, {"it": Line("what it is", "ms", "the other", goal, reason)}, measure=None)


class ThePage(unittest.TestCase):
    def setUp(self):
        self.path = Path(self.enterContext(tempfile.TemporaryDirectory()), "page.md")
        self.groups = (Group("One", "About these.", (row("first"), row("second"))),)

    def measure(self, name, measured, machine="a machine"):
        page = Page(self.path)
        [chosen] = [row for row in self.groups[0].rows if row.name == name]
        page.add(chosen, {"it": READINGS}, measured, machine)
        page.write(self.groups)

    def lines(self):
        return self.path.read_text().splitlines()

    def test_a_line_says_what_was_measured_and_whether_the_goal_is_met(self):
        line = line_of(row("a"), Line("what it is", "ms", "the other", at_most(4)), READINGS, "today")
        self.assertEqual(
            line,
            "| `a` | what it is | 2.00 · **4.00** · 9.00 ms | the other: 1.00 · **3.00** · 4.00 ms "
            "| 1.00 · **2.00** · 3.00 | at most 4.00 ms | met | today |\n",
        )

    def test_a_missed_goal_gives_its_reason(self):
        for goal, reason, verdict in [
            (at_most_times(1), "the X server", "| at most 1.00 times | **missed**: the X server |"),
            (never_above(5), "", "| always at most 5.00 ms | **missed** |"),
            (at_most_above(0.5), "", "| at most 0.500 ms more | **missed** |"),
            (at_most(9), "the X server", "| at most 9.00 ms | met |"),
        ]:
            line = Line("what", "ms", "the other", goal, reason)
            self.assertIn(verdict, line_of(row("a"), line, READINGS, "today"))

    def test_a_row_that_is_not_measured_again_keeps_its_figures_and_its_run(self):
        self.measure("first", "2026-03-05 09:00")
        first = [line for line in self.lines() if line.startswith("| `first`")]
        self.assertIn("| `second` | what it is | not measured yet | the other | | | | |", self.lines())
        self.measure("second", "2026-03-06 10:00", "another machine")
        self.assertEqual([line for line in self.lines() if line.startswith("| `first`")], first)
        self.assertEqual(
            self.lines()[-2:], ["- 2026-03-05 09:00: a machine", "- 2026-03-06 10:00: another machine"]
        )

    def test_the_page_follows_the_rows_and_forgets_runs_that_none_is_from(self):
        self.measure("first", "2026-03-05 09:00")
        self.groups = (Group("One", "About these.", (row("first"), row("second", at_most(5)))),)
        self.measure("first", "2026-03-06 10:00")
        self.assertNotIn("2026-03-05", self.path.read_text())
        self.assertIn("| not measured yet | the other | | at most 5.00 ms |", self.path.read_text())
        self.groups = (Group("One", "About these.", (row("second"),)),)
        self.measure("second", "2026-03-05 09:00")
        self.assertNotIn("`first`", self.path.read_text())


if __name__ == "__main__":
    unittest.main()
