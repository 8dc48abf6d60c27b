"""The programs of the benchmarks that measure by themselves."""

import os
import subprocess
from pathlib import Path

from benchmarks.series import Reading

BUILD = Path(os.environ.get("BUILD", ""))
BARE_QT = BUILD / "bench" / "bare_qt"
EMPTY = BUILD / "bench" / "empty"
TEXTS = ("ASCII", "accented", "Cyrillic", "mixed", "Chinese")


def _lines(name, *arguments):
    command = [BUILD / "bench" / name, *map(str, arguments)]
    done = subprocess.run(command, capture_output=True, text=True, check=True)
    return [line.split() for line in done.stdout.splitlines()]


def _searches(names, rounds):
    """For each round what the search in every kind of text took."""
    lines = [
        (kind, Reading(float(own), float(beside)))
        for kind, own, beside in _lines("matcher_bench", "search", names, rounds)
    ]
    return [dict(lines[start : start + len(TEXTS)]) for start in range(0, len(lines), len(TEXTS))]


def search(counts, rounds):
    """Keys are the kind of text and the number of names; "growth" is ASCII with the most beside the fewest."""
    measured = {count: _searches(count, rounds) for count in counts}
    for number in range(rounds):
        figures = {(kind, count): measured[count][number][kind] for count in counts for kind in TEXTS}
        growth = (figures["ASCII", count].own for count in (max(counts), min(counts)))
        yield {**figures, "growth": Reading(*growth)}


def index(counts, rounds):
    """Keys are "seconds" and "megabytes", and the number of names."""
    for _ in range(rounds):
        figures = {}
        for count in counts:
            [[seconds, megabytes]] = _lines("matcher_bench", "index", count)
            figures["seconds", count] = Reading(float(seconds))
            figures["megabytes", count] = Reading(float(megabytes))
        yield figures


def _milliseconds(*arguments):
    return float(_lines("views_bench", *arguments, 1)[0][0])


def typing(lengths, rounds):
    """Keys are the numbers of characters; with blanks stands beside."""
    for _ in range(rounds):
        yield {
            n: Reading(_milliseconds("typing", n, "none"), _milliseconds("typing", n, "blanks"))
            for n in lengths
        }


def menu(counts, rounds):
    """Keys are the numbers of pending items."""
    for _ in range(rounds):
        yield {count: Reading(_milliseconds("menu", count)) for count in counts}
