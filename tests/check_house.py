#!/usr/bin/env python3
"""Checks the house rules that no compiler knows, by searching the sources.

    check_house.py ROOT             prints one line for each offence and exits with 1 when there is one
    check_house.py --drawing ROOT   prints the rooms of the product, and which other rooms each knows
"""

import pathlib
import re
import sys
from collections import Counter

PORTABLE = ("app", "detect", "model", "client", "outbox", "ui", "doctor")

# What looks at one kind of desktop for notewick-doctor. It is no portable code: it stands above the front end
# and may know all of it.
FOR_ONE_SYSTEM = "doctor/linux/"

# What each portable folder may know besides itself: folders, and single headers of others.
LAYERS = {
    "model": ["app/constants.h", "platform/files.h"],
    "detect": ["model/", "platform/", "app/constants.h"],
    "client": ["model/", "platform/", "app/constants.h"],
    "outbox": ["model/", "detect/", "client/", "platform/", "app/constants.h"],
    "ui": ["model/", "detect/", "client/", "outbox/", "platform/", "app/constants.h"],
    "doctor": ["client/uri.h", "platform/"],
    "app": ["model/", "detect/", "client/", "outbox/", "ui/", "platform/"],
}

# The rooms of each front end, and which of the others each may know. Every room may know the ports
# (platform/*.h). The implementations of the ports stand above the rooms and may know all of them.
ROOMS = {
    "platform/linux": {
        "titles": [],
        "x11": ["titles"],
        "wayland": ["titles"],
        "atspi": ["titles"],
        "controls": [],
        "panels": ["controls", "x11"],
        "tray": ["controls", "x11"],
        "session": [],
        "secrets": [],
        "http": [],
    },
    "platform/macos": {
        "bridge": [],
        "controls": ["bridge"],
        "panels": ["bridge", "controls"],
        "tray": ["bridge"],
        "session": ["bridge"],
        "http": ["bridge"],
    },
}

# ... and where a file may include a rule of the portable code, with the reason.
MORE_RULES = {
    "platform/macos/notifier.mm": {"detect/notification.h": "the command, proven on every machine"},
}

# System headers that portable code may include: containers, algorithms, text and numbers. No
# threads, clocks, streams of files or system calls among them.
PORTABLE_HEADERS = set(
    """
    algorithm array bit cctype charconv chrono cmath compare concepts cstddef cstdint cstring deque
    functional iterator limits map memory numeric optional ostream queue ranges set span sstream string
    string_view tuple type_traits unordered_map unordered_set utility variant vector nlohmann/json.hpp
    tl/expected.hpp utf8proc.h
    """.split()
)
# ... and where a file may include one more, with the reason.
MORE_HEADERS = {
    "app/entry.cpp": {"iostream": "the self-test prints to standard output"},
    "detect/stamps.cpp": {"cstdio": "formats numbers into a buffer"},
    "platform/fatal_error.cpp": {"cstdio": "prints the last line", "cstdlib": "ends the process"},
}

# Names of toolkits, of the operating system, and of clocks.
FOREIGN = re.compile(
    r"""
      \bQ[A-Z]\w*                                       # Qt
    | \b(?:xcb|wl|zwlr|g|gtk|secret|dbus|atspi)_[a-z]\w*
    | \b(?:NS|AX|CF|UI|CG|Sec)[A-Z][a-z]\w+             # the frameworks of macOS
    | \bG(?:tk|Object|Variant|DBus|Error|List)\w*
    | \b(?:system|steady|high_resolution|utc|file)_clock\b
    | (?<![\w.>:])(?:std::)?(?:time|clock|sleep|usleep|system|rand|signal)\s*\(
    | \b(?:nanosleep|sleep_for|sleep_until|gettimeofday|clock_gettime|localtime|localtime_r|gmtime
        |mktime|strftime|getenv|setenv|fopen|popen|fork|execv\w*|getpid|random_device|current_zone
        |ifstream|ofstream|fstream|jthread)\b
    | \bstd::(?:filesystem|thread|mutex|async|future|atomic|condition_variable)\b
    | \b(?:__APPLE__|__linux__|__unix__|_WIN32|__MACH__)\b
    """,
    re.VERBOSE,
)

# Files of the core without a test file of their own, with the reason.
UNTESTED = {
    "app/main.cpp": "two lines; the desktop tests start the program through it",
    "platform/ports.cpp": "keeps one value; every story runs through it",
}

LONGEST_FILE = 400
MOST_FILES_OF_PRODUCT = 36  # in one folder
MOST_FILES_OF_TESTS = 50
SOURCES = {".h", ".cpp", ".mm", ".m", ".py", ".sh", ".cmake", ""}  # scripts have no suffix
CHECKED_FOLDERS = PORTABLE + ("platform", "tests", "tools", "bench", "fuzz", "packaging", "cmake")

INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s*([<"])([^>"]+)[>"]', re.MULTILINE)
NOT_CODE = re.compile(r'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"', re.DOTALL)


def sources(root, folders, suffixes):
    """Every source file below the folders, as (path below root, text)."""
    for folder in folders:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in suffixes and path.is_file():
                yield path.relative_to(root).as_posix(), path.read_text(encoding="utf-8")


def line_of(text, offset):
    return text.count("\n", 0, offset) + 1


def without_comments_and_texts(text):
    """The same text with comments and string literals blanked out, line by line."""
    return NOT_CODE.sub(lambda found: re.sub(r"[^\n]", " ", found.group()), text)


def foreign_names(path, text):
    """Portable code names no toolkit, no call of the system, no clock."""
    code = INCLUDE.sub("", without_comments_and_texts(text))
    for found in FOREIGN.finditer(code):
        yield f"{path}:{line_of(code, found.start())}: portable code names {found.group().strip()}"
    allowed = PORTABLE_HEADERS | MORE_HEADERS.get(path, {}).keys()
    for found in INCLUDE.finditer(text):
        kind, header = found.groups()
        if kind == "<" and header not in allowed:
            yield f"{path}:{line_of(text, found.start())}: portable code includes <{header}>"


def knows(path, header):
    """Whether a file in a portable folder may include a header of the project."""
    folder = path.split("/")[0]
    if header.startswith(folder + "/"):
        return True
    if header == "app/app_delegate.h":
        return path.split("/")[-1].startswith("delegate_") and path.endswith(".cpp")
    if header.startswith("platform/") and header.count("/") > 1:
        return False
    return any(
        header == entry or (entry.endswith("/") and header.startswith(entry)) for entry in LAYERS[folder]
    )


def layers(path, text):
    """Knowledge goes one way."""
    for found in INCLUDE.finditer(text):
        kind, header = found.groups()
        if kind == '"' and not knows(path, header):
            yield f"{path}:{line_of(text, found.start())}: may not know {header}"


def front_end_and_room(path):
    """("platform/linux", "tray") of platform/linux/tray/a.cpp; the room is "" above the rooms."""
    front_end = next((each for each in ROOMS if path.startswith(each + "/")), None)
    below = path[len(front_end) + 1 :] if front_end else ""
    return front_end, below.rpartition("/")[0]


def may_know_in_front_end(path, header):
    """Whether a file of a front end may include a header of the project."""
    front_end, room = front_end_and_room(path)
    if "/" not in header:  # made by the build
        return True
    if re.fullmatch(r"platform/\w+\.h", header) or header in MORE_RULES.get(path, {}):
        return True
    if header.startswith("platform/posix/"):
        return room == ""
    other_front_end, other_room = front_end_and_room(header)
    return other_front_end == front_end and (
        room in ("", other_room) or other_room in ROOMS[front_end].get(room, [])
    )


def rooms(path, text):
    """Knowledge goes one way between the rooms of a front end, too."""
    front_end, room = front_end_and_room(path)
    if room and room not in ROOMS[front_end]:
        yield f"{path}: stands in a room that is not in the table"
    for found in INCLUDE.finditer(text):
        kind, header = found.groups()
        if kind == '"' and not may_know_in_front_end(path, header):
            yield f"{path}:{line_of(text, found.start())}: may not know {header}"


def arrows(root):
    """Every room of the product, and the set of the other rooms that its files include.

    The constants, which everybody may know, are no room. The files delegate_*.cpp implement the
    class of app/, in whichever folder they stand.
    """
    known = {}
    for path, text in sources(root, PORTABLE + ("platform",), {".h", ".cpp", ".mm"}):
        if path.startswith("app/constants."):
            continue
        headers = [
            header
            for kind, header in INCLUDE.findall(text)
            if kind == '"' and "/" in header and header != "app/constants.h"
        ]
        room = "app" if "/delegate_" in path else path.rpartition("/")[0]
        known.setdefault(room, set()).update(header.rpartition("/")[0] for header in headers)
    return {room: others - {room} for room, others in known.items()}


def floor(room, known, above=()):
    """1 for a room that knows no other, else one more than the highest of those it knows."""
    if room in above:
        raise ValueError(" knows ".join([*above[above.index(room) :], room]))
    return 1 + max((floor(other, known, (*above, room)) for other in known.get(room, ())), default=0)


def table_of_rooms(root):
    """The table of rooms allows no circle, and no more than is needed."""
    known = arrows(root)
    for front_end, table in ROOMS.items():
        for room, others in table.items():
            try:
                floor(room, table)
            except ValueError as circle:
                yield f"{front_end}: the rooms go round in a circle: {circle}"
            for other in others:
                if f"{front_end}/{other}" not in known.get(f"{front_end}/{room}", ()):
                    yield f"{front_end}/{room}: may know {other}, and does not"


def crowded_folders(root):
    for kinds, most in ((PORTABLE + ("platform",), MOST_FILES_OF_PRODUCT), (("tests",), MOST_FILES_OF_TESTS)):
        files = [path for path, _ in sources(root, kinds, SOURCES | {".txt"})]
        for folder, count in Counter(path.rpartition("/")[0] for path in files).items():
            if count > most:
                yield f"{folder}: {count} files, more than {most}"


def port_headers(path, text):
    """The ports know plain types only."""
    for found in INCLUDE.finditer(text):
        kind, header = found.groups()
        plain = header in PORTABLE_HEADERS if kind == "<" else re.fullmatch(r"platform/\w+\.h", header)
        if not plain:
            yield f"{path}:{line_of(text, found.start())}: a port may not know {header}"


def sources_of_portable_folders(root, suffixes):
    found = sources(root, PORTABLE, suffixes)
    yield from (each for each in found if not each[0].startswith(FOR_ONE_SYSTEM))


def portable_sources(root, suffixes):
    """The portable folders, and what stands beside the ports."""
    yield from sources_of_portable_folders(root, suffixes)
    yield from (each for each in sources(root, ["platform"], {".cpp"}) if each[0].count("/") == 1)


def missing_tests(root):
    """Tests mirror sources."""
    for path, _ in portable_sources(root, {".cpp"}):
        test = "tests/" + path.removesuffix(".cpp") + "_test.cpp"
        if path not in UNTESTED and not (root / test).is_file():
            yield f"{path}: has no {test}"
    for path, reason in UNTESTED.items():
        if not reason or not (root / path).is_file():
            yield f"{path}: an exception for a file that is not there, or without a reason"


def tests_without_build(root):
    """Every test stands in the description of the build of its folder, or in one above."""
    descriptions = [path for path in (root / "tests").rglob("*") if path.suffix == ".cmake"]
    descriptions += (root / "tests").rglob("CMakeLists.txt")
    texts = [(path.parent, path.read_text(encoding="utf-8")) for path in descriptions]
    for path, _ in sources(root, ["tests"], {".cpp", ".mm", ".py"}):
        file = root / path
        if not re.match(r"test_|.*_test$", file.stem):
            continue
        above = [(folder, text) for folder, text in texts if file.is_relative_to(folder)]
        if not any(
            re.search(rf"\b{file.relative_to(folder).with_suffix('')}\b", text) for folder, text in above
        ):
            yield f"{path}: stands in no description of the build"


def long_files(path, text):
    lines = text.count("\n")
    if lines > LONGEST_FILE:
        yield f"{path}: {lines} lines, more than {LONGEST_FILE}"


def switched_off_tests(path, text):
    for found in re.finditer(r"\b(?:GTEST_SKIP|DISABLED_\w+)", without_comments_and_texts(text)):
        yield f"{path}:{line_of(text, found.start())}: a test is switched off: {found.group()}"


def offences(root):
    code = {".h", ".cpp"}
    for folder in CHECKED_FOLDERS:
        if not any(sources(root, [folder], SOURCES)):
            yield f"{root / folder}: holds no source; is this the root of the project?"
    for path, text in portable_sources(root, code):
        yield from foreign_names(path, text)
    for path, text in sources_of_portable_folders(root, code):
        yield from layers(path, text)
    for path, text in sources(root, ["platform"], {".h"}):
        if path.count("/") == 1:
            yield from port_headers(path, text)
    for path, text in sources(root, ROOMS, code | {".mm"}):
        yield from rooms(path, text)
    yield from table_of_rooms(root)
    yield from crowded_folders(root)
    yield from missing_tests(root)
    yield from tests_without_build(root)
    for path, text in sources(root, CHECKED_FOLDERS, SOURCES):
        yield from long_files(path, text)
        if path.startswith("tests/") and path.endswith(".cpp"):
            yield from switched_off_tests(path, text)


def drawing(root):
    known = arrows(root)
    for room in sorted(known, key=lambda room: (floor(room, known), room)):
        yield f"{floor(room, known)}  {room}: {', '.join(sorted(known[room])) or 'none'}"
    count = sum(len(others) for others in known.values())
    to_ports = sum("platform" in others for others in known.values())
    yield (
        f"{len(known)} rooms, {count} arrows ({to_ports} of them to the ports), "
        f"{max(floor(room, known) for room in known)} floors"
    )


def main():
    match sys.argv[1:]:
        case ["--drawing", root]:
            print("\n".join(drawing(pathlib.Path(root))))
            return 0
        case [root]:
            found = list(offences(pathlib.Path(root)))
            print("\n".join(found) if found else "The house is in order.")
            return 1 if found else 0
        case _:
            sys.exit("usage: check_house.py [--drawing] ROOT")


if __name__ == "__main__":
    sys.exit(main())
