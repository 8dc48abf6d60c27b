"""Measures rows of the benchmarks and writes docs/benchmarks.md.

    benchmark.py [--long] [--try] [ROW...]

Run by `tools/bench`, inside a private desktop; the folder with the programs is named by the variable BUILD.
"""

import argparse
import sys
import time
import traceback
from datetime import datetime
from pathlib import Path

import desk
from benchmarks import machine
from benchmarks.document import Page
from benchmarks.table import GROUPS

PAGE = Path(__file__).resolve().parents[1] / "docs" / "benchmarks.md"


def chosen_rows(names, with_long):
    """The named rows; none named are all, the long ones only if they are asked for."""
    rows = {row.name: row for group in GROUPS for row in group.rows}
    unknown = set(names) - rows.keys()
    if unknown:
        sys.exit(f"There is no row {', '.join(sorted(unknown))}. The rows are: {', '.join(rows)}")
    if names:
        return [rows[name] for name in names]
    return [row for row in rows.values() if with_long or not row.is_long]


def measure(row, measured, is_trial):
    """Whether it worked; a row that fails keeps the figures that it had."""
    print(f"{row.name} ...", flush=True)
    started = time.monotonic()
    try:
        readings = row.readings(1) if is_trial else row.readings()
    except Exception:
        traceback.print_exc()
        return False
    finally:
        desk.close_all()
    page = Page(PAGE)
    page.add(row, readings, measured, machine.description())
    if not is_trial:
        page.write(GROUPS)
    print(f"{row.name}: {time.monotonic() - started:.0f} s\n{page.of(row)}", flush=True)
    return True


def main():
    parser = argparse.ArgumentParser(description="Measures the benchmarks and writes docs/benchmarks.md.")
    parser.add_argument("--long", action="store_true", help="the rows too whose round takes over a minute")
    parser.add_argument(
        "--try", dest="is_trial", action="store_true", help="one round of each; writes nothing"
    )
    parser.add_argument("rows", nargs="*", metavar="ROW", help="only these, whatever their length")
    arguments = parser.parse_args()
    measured = datetime.now().strftime("%Y-%m-%d %H:%M")
    rows = chosen_rows(arguments.rows, arguments.long)
    done = [measure(row, measured, arguments.is_trial) for row in rows]
    return 0 if all(done) else 1


if __name__ == "__main__":
    sys.exit(main())
