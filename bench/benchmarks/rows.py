"""How a row of the benchmarks is described."""

from collections.abc import Callable, Iterable, Mapping
from dataclasses import dataclass

from benchmarks.series import Goal, Reading

ROUNDS = 7


@dataclass(frozen=True)
class Line:
    """One figure of a row, as the document shows it."""

    what: str
    unit: str
    beside: str = ""  # the name of what stands beside it
    goal: Goal | None = None
    reason: str = ""  # why the goal is missed, as a profile says; shown only where it is


@dataclass(frozen=True)
class Row:
    """Figures that one run of `measure` gives, which yields one round after the other.

    A row whose round takes longer than a minute is measured once, and only when long rows are asked for.
    """

    name: str
    lines: Mapping[str, Line]
    measure: Callable[[int], Iterable[Mapping[str, Reading]]]
    is_long: bool = False

    def readings(self, rounds=ROUNDS):
        """The readings of every line, by its key."""
        rounds = list(self.measure(1 if self.is_long else rounds))
        return {key: [figures[key] for figures in rounds] for key in self.lines}


@dataclass(frozen=True)
class Group:
    """Rows that stand in one table, and what a reader has to know about them."""

    title: str
    text: str
    rows: tuple[Row, ...]
