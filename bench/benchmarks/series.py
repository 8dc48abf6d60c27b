"""What a row is made of: figures over several rounds, what stands beside them, and the goal."""

import statistics
from dataclasses import dataclass
from typing import NamedTuple


class Reading(NamedTuple):
    """What one round gave: the program's own figure, and that of what stands beside it."""

    own: float
    beside: float | None = None


@dataclass(frozen=True)
class Series:
    """The figures of several rounds."""

    values: tuple[float, ...]

    @property
    def minimum(self):
        return min(self.values)

    @property
    def median(self):
        return statistics.median(self.values)

    @property
    def maximum(self):
        return max(self.values)


def own_of(readings):
    return Series(tuple(reading.own for reading in readings))


def beside_of(readings):
    """None where nothing stands beside."""
    if any(reading.beside is None for reading in readings):
        return None
    return Series(tuple(reading.beside for reading in readings))


def ratio_of(readings):
    """Round by round, so that a slow moment of the machine counts on both sides; None where it has no meaning."""
    if any(not reading.beside for reading in readings):
        return None
    return Series(tuple(reading.own / reading.beside for reading in readings))


def excess_of(readings):
    """By how much the program's own figure is above the one beside it."""
    return Series(tuple(reading.own - reading.beside for reading in readings))


@dataclass(frozen=True)
class Goal:
    """A limit that the rounds have to keep: their median, or every one of them."""

    limit: float
    of: object = own_of  # which series of the readings
    always: bool = False

    def is_met_by(self, readings):
        series = self.of(readings)
        return (series.maximum if self.always else series.median) <= self.limit


def at_most(limit):
    return Goal(limit)


def never_above(limit):
    return Goal(limit, always=True)


def at_most_times(limit):
    return Goal(limit, ratio_of)


def at_most_above(limit):
    return Goal(limit, excess_of)
