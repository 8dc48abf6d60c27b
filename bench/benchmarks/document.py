"""Writes the page of the benchmarks; rows that were not measured keep what the page says of them."""

import re

from benchmarks.series import beside_of, own_of, ratio_of

INTRODUCTION = """\
# Benchmarks

`tools/bench` measures the rows of this page and writes them, `tools/bench ROW...` single ones; `--long` adds those
whose round takes longer than a minute, which are measured once. Everything runs on a private X11 desktop without a
screen reader. In each of seven rounds the program and what stands beside it take turns, so that a slow moment of the
machine counts on both sides. A figure is the minimum, the **median** and the maximum of the rounds; a ratio is taken
round by round. The median decides whether a goal is met; where the goal says "always", every round does. A row that
was not measured again keeps its figures and its date.
"""
HEAD = (
    "| row | what | Notewick | beside it | ratio | goal | | measured |\n|---|---|---|---|---|---|---|---|\n"
)
RUNS = "## Machines and versions\n"
NOT_YET = "not measured yet"


def spoken(number):
    """Three digits that count, without an exponent."""
    if number == 0:
        return "0"
    decimals = next((d for d, least in enumerate((100, 10, 1, 0.1, 0.01)) if abs(number) >= least), 5)
    return f"{number:,.{decimals}f}"


def _figures(series, unit=""):
    if series is None:
        return ""
    low, middle, high = map(spoken, (series.minimum, series.median, series.maximum))
    text = f"**{middle}**" if low == high else f"{low} · **{middle}** · {high}"
    return f"{text} {unit}".rstrip()


def _goal(line):
    if line.goal is None:
        return ""
    kinds = {ratio_of: "times", own_of: line.unit}
    unit = kinds.get(line.goal.of, f"{line.unit} more")
    return " ".join(
        filter(None, ["always" if line.goal.always else "", f"at most {spoken(line.goal.limit)}", unit])
    )


def _verdict(line, readings):
    if line.goal is None:
        return ""
    if line.goal.is_met_by(readings):
        return "met"
    return f"**missed**: {line.reason}" if line.reason else "**missed**"


def line_of(row, line, readings, measured):
    """One line of a table, from readings that were made at `measured`, the run's date and time."""
    beside = beside_of(readings)
    cells = [
        f"`{row.name}`",
        line.what,
        _figures(own_of(readings), line.unit),
        f"{line.beside}: {_figures(beside, line.unit)}" if beside else "",
        _figures(ratio_of(readings)),
        _goal(line),
        _verdict(line, readings),
        measured,
    ]
    return _table_line(cells)


def _pending_line(row, line):
    return _table_line([f"`{row.name}`", line.what, NOT_YET, line.beside, "", _goal(line), "", ""])


def _table_line(cells):
    return "".join(f"| {cell} " if cell else "| " for cell in cells) + "|\n"


class Page:
    """The page as it stands on the disk, and what was measured since it was read."""

    def __init__(self, path):
        self._path = path
        text = path.read_text("utf-8") if path.exists() else ""
        self._lines = {}
        for found in re.finditer(r"^\| `([^`]+)` \|.*\n", text, re.MULTILINE):
            if NOT_YET not in found[0]:
                self._lines.setdefault(found[1], []).append(found[0])
        self._runs = dict(re.findall(r"^- ([-0-9]+ [:0-9]+): (.*)$", text, re.MULTILINE))

    def add(self, row, readings, measured, machine):
        self._lines[row.name] = [
            line_of(row, line, readings[key], measured) for key, line in row.lines.items()
        ]
        self._runs[measured] = machine

    def write(self, groups):
        tables = [f"## {g.title}\n\n{g.text}\n\n{HEAD}{''.join(map(self.of, g.rows))}" for g in groups]
        parts = [INTRODUCTION, *tables, f"{RUNS}\n{self._runs_of(''.join(tables))}"]
        self._path.write_text("\n".join(parts), "utf-8")

    def of(self, row):
        return "".join(self._lines.get(row.name) or (_pending_line(row, line) for line in row.lines.values()))

    def _runs_of(self, tables):
        """Those to which a line still points."""
        return "".join(
            f"- {run}: {machine}\n" for run, machine in sorted(self._runs.items()) if f"| {run} |" in tables
        )
