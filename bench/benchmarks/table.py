"""The table of the benchmarks: every row, what stands beside it, and its goals."""

from functools import partial

from benchmarks import notes, programs, rest, start
from benchmarks.rows import Group, Line, Row
from benchmarks.series import at_most, at_most_above, at_most_times, never_above

ONE_LOOK_UP = (
    "a look-up for each byte waits for the one before, where Hyperscan compares 16 bytes at once; beyond ASCII, folding by "
    "Unicode's tables takes more than half"
)
ONE_SAVE = "the turn that saves the whole list: its JSON, and the wait for the disk"
SAVES_AND_SIGNS = "TLS takes 45 %, as in curl; saving the list 20 %, Qt's thread for D-Bus 9 %, drawing 8 %"
LIBRARIES = "heap 2.1 MB; the rest is what loaded libraries write, GnuTLS, Kerberos and LDAP behind libcurl among them"
MORE_PAGES = (
    "TLS takes 5 MB, what else stands behind libcurl 3 MB, and Qt's widgets 3 MB more than a tray icon; nobody else has "
    "these in memory here"
)
LOADING = (
    "more than half of the difference is the loading of 31 libraries more than the bare icon has, most of them behind "
    "libcurl"
)
OPEN_CONNECTIONS = (
    "their number goes up and down between 17 and 20 with the requests under way, without a trend"
)
SAMPLES = "twenty samples of 1.4 ms each while builds kept both processors busy; a sample alone takes 0.5 ms"
ROUND_TRIPS = "a sample wakes once and then waits for each of its round trips to the X server"
SEARCHES = {"ASCII": 1.2, "accented": 1.5, "Cyrillic": 1.5, "mixed": 1.5, "Chinese": 3.2}
SEARCHES_IN_MANY = {"ASCII": 1.0, "accented": 1.0, "Cyrillic": 1.0, "mixed": 1.0, "Chinese": 1.5}


def sending(stall=None, seconds=None, processor=None, beside="", megabytes=None, flushes=None):
    """The lines of notes on their way, with the goals that they have."""
    return {
        "seconds": Line("until all are sent", "s", beside, seconds),
        "processor": Line("processor time", "s", beside, processor, SAVES_AND_SIGNS),
        "stall": Line("longest stall of the main loop", "ms", "bare Qt tray icon", stall, ONE_SAVE),
        "megabytes": Line("written to files", "MB", goal=megabytes),
        "flushes": Line("confirmed by the disk", "times", goal=flushes),
    }


def prefixed(prefix, lines, key=None):
    """The same lines with a beginning, and with a key in front of theirs where one is given."""
    return {
        (key, name)
        if key
        else name: Line(f"{prefix}: {line.what}", line.unit, line.beside, line.goal, line.reason)
        for name, line in lines.items()
    }


def outage_lines():
    """Of a minute without the service; there is nothing to wait for but its end."""
    lines = {}
    for count, goals in {
        100: {},
        1000: {"processor": at_most(1.5), "megabytes": at_most(1), "flushes": at_most(3)},
        3000: {"stall": never_above(50)},
    }.items():
        lines |= prefixed(f"{count:,} notes, a minute", sending(**goals), count)
        del lines[count, "seconds"]
    return lines


def search_lines(count, goals):
    return {
        (kind, count): Line(
            f"{kind}, {count:,} names",
            "µs",
            "Hyperscan",
            at_most_times(goals[kind]) if goals else None,
            ONE_LOOK_UP,
        )
        for kind in programs.TEXTS
    }


NOTES = Group(
    "Notes on their way",
    "Over TLS to the local service on the same machine, with a tray and a notification server. curl sends the same "
    "notes, six at a time, a connection each. A stall is the longest time for which the program's tray item did not "
    "answer; the bare Qt tray icon is asked in the same moments and shows how long the machine itself lets a program "
    "wait.",
    (
        Row(
            "drain",
            prefixed(
                "1,000 notes", sending(seconds=at_most_times(3), processor=at_most_times(2), beside="curl")
            ),
            partial(notes.drain, 1000),
        ),
        Row(
            "backlog",
            prefixed("3,000 notes at the start", sending(seconds=at_most(45), stall=never_above(50)))
            | {
                "refreshes": Line("3,000 notes at the start: refreshes of the token", "", goal=never_above(6))
            },
            partial(notes.backlog, 3000),
        ),
        Row(
            "backlog-10000",
            prefixed("10,000 notes at the start", sending()),
            partial(notes.backlog, 10000),
            is_long=True,
        ),
        Row("outage", outage_lines(), partial(notes.outage, (100, 1000, 3000)), is_long=True),
        Row(
            "bus",
            {
                "all": Line("100 notes: messages on the session bus, a note", "", goal=at_most(12)),
                "secrets": Line("100 notes: of these with the secret store, a note", "", goal=at_most(0)),
            },
            partial(notes.bus, 100),
        ),
    ),
)

MATCHING = Group(
    "Names in titles",
    "Processor time for 300 characters of window titles, folding included, beside Hyperscan's search alone in the "
    "folded text. Half of the searches find one name, half none; the titles are in `bench/matcher_bench.cpp`, ASCII, "
    "accented Latin, Cyrillic, a mixture of all, Chinese. A third of the names is not Latin, and the surnames of longer "
    "lists are double.",
    (
        Row(
            "matcher",
            search_lines(10, None)
            | search_lines(1000, None)
            | search_lines(10_000, SEARCHES)
            | search_lines(100_000, SEARCHES_IN_MANY)
            | {"growth": Line("ASCII, 100,000 names beside 10", "µs", "10 names", at_most_times(3))},
            partial(programs.search, (10, 1000, 10_000, 100_000)),
        ),
        Row(
            "index",
            {
                ("seconds", 10_000): Line("index of 10,000 names", "s"),
                ("megabytes", 10_000): Line("its memory", "MB"),
                ("seconds", 100_000): Line("index of 100,000 names", "s", goal=at_most(0.5)),
                ("megabytes", 100_000): Line("its memory", "MB", goal=at_most(36)),
            },
            partial(programs.index, (10_000, 100_000)),
        ),
        Row(
            "sample",
            {
                "elapsed": Line(
                    "a sample on X11, 8 windows", "ms", "its round trips alone", at_most_above(0.2)
                )
            },
            start.sample,
        ),
    ),
)

VIEWS = Group(
    "Widget and menu",
    "From the key to the painted note field, and from one pending item more or less to the drawn menu, with a tray that "
    "shows it; the number on the icon stays the same.",
    (
        Row(
            "typing",
            {
                10_000: Line("a key in 10,000 characters without blanks", "ms", "with blanks", at_most(15)),
                100_000: Line("a key in 100,000 characters without blanks", "ms", "with blanks"),
            },
            partial(programs.typing, (10_000, 100_000)),
        ),
        Row(
            "menu",
            {
                10: Line("the menu with 10 pending items", "ms", goal=at_most(1)),
                1000: Line("the menu with 1,000 pending items", "ms", goal=at_most(10)),
            },
            partial(programs.menu, (10, 1000)),
        ),
    ),
)

REST = Group(
    "At rest",
    "Signed in, the widget shown, alone on its desktop but for the session and the local service; the others run before "
    "and after it, each alone. PSS is the proportional set size.",
    (
        Row(
            "memory",
            {
                ("pss", "tray"): Line("PSS", "MB", "bare Qt tray icon", at_most(28), MORE_PAGES),
                ("private", "tray"): Line("private memory", "MB", "bare Qt tray icon", at_most(5), LIBRARIES),
                ("pss", "copyq"): Line("PSS", "MB", "CopyQ"),
                ("private", "copyq"): Line("private memory", "MB", "CopyQ"),
            },
            rest.memory,
        ),
        Row(
            "rest",
            {
                ("processor", "parcellite"): Line(
                    "five minutes: processor time", "%", "Parcellite", at_most(0.003), SAMPLES
                ),
                ("processor", "copyq"): Line("five minutes: processor time", "%", "CopyQ"),
                ("wake-ups", "tray"): Line(
                    "five minutes: wake-ups a second", "", "bare Qt tray icon", at_most(0.2), ROUND_TRIPS
                ),
                "flushes": Line("five minutes: confirmed by the disk", "times", goal=at_most(0)),
            },
            rest.rest,
            is_long=True,
        ),
        Row(
            "week",
            {
                "megabytes": Line("a working week: growth of private memory", "MB", goal=at_most(1)),
                "descriptors": Line(
                    "a working week: more descriptors", "", goal=at_most(0), reason=OPEN_CONNECTIONS
                ),
            },
            rest.week,
            is_long=True,
        ),
    ),
)

START = Group(
    "Starts",
    "Signed in; until the icon is registered at the tray's host.",
    (
        Row(
            "start",
            {
                "elapsed": Line(
                    "launch to tray item", "ms", "bare Qt tray icon", at_most_times(1.15), LOADING
                ),
                "processor": Line("processor time until then", "ms", "bare Qt tray icon", at_most_times(2)),
            },
            start.launch,
        ),
        Row(
            "self-test",
            {
                "processor": Line(
                    "processor time of `--selftest`",
                    "ms",
                    "empty program with its libraries",
                    at_most_times(1.1),
                )
            },
            start.self_test,
        ),
    ),
)

GROUPS = (NOTES, MATCHING, VIEWS, REST, START)
