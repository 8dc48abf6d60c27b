#!/usr/bin/env python3
"""Checks the house rules that no compiler knows, by searching the sources.

    check_house.py ROOT

Prints one line for each offence and exits with 1 when there is one.
"""

import pathlib
import re
import sys

PORTABLE = ("app", "detect", "model", "client", "outbox", "ui")

# What each portable folder may know besides itself: folders, and single headers of others.
LAYERS = {
    "model": ["app/constants.h", "platform/files.h"],
    "detect": ["model/", "platform/", "app/constants.h"],
    "client": ["model/", "platform/", "app/constants.h"],
    "outbox": ["model/", "detect/", "client/", "platform/", "app/constants.h"],
    "ui": ["model/", "detect/", "client/", "outbox/", "platform/", "app/constants.h"],
    "app": ["model/", "detect/", "client/", "outbox/", "ui/", "platform/"],
}

# System headers that portable code may include: containers, algorithms, text and numbers. No
# threads, clocks, streams of files or system calls among them.
PORTABLE_HEADERS = {
    "algorithm", "array", "bit", "cctype", "charconv", "chrono", "cmath", "compare", "concepts",
    "cstddef", "cstdint", "cstring", "deque", "functional", "iterator", "limits", "map", "memory", "numeric",
    "optional", "ostream", "queue", "ranges", "set", "span", "sstream", "string", "string_view",
    "tuple", "type_traits", "unordered_map", "unordered_set", "utility", "variant", "vector",
    "nlohmann/json.hpp", "tl/expected.hpp", "utf8proc.h",
}
# ... and where a file may include one more, with the reason.
MORE_HEADERS = {
    "app/entry.cpp": {"iostream": "the self-test prints to standard output"},
    "detect/stamps.cpp": {"cstdio": "formats numbers into a buffer"},
}

# Names of toolkits, of the operating system, and of clocks.
FOREIGN = re.compile(r"""
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
    """, re.VERBOSE)

# Core bodies without a test file of their own, with the reason.
UNTESTED = {
    "app/main.cpp": "two lines; the desktop tests start the program through it",
}

LONGEST_FILE = 400
SOURCES = {".h", ".cpp", ".mm", ".m", ".py", ".sh", ".cmake", ""}  # scripts have no suffix
CHECKED_FOLDERS = PORTABLE + ("platform", "tests", "tools", "bench", "fuzz", "packaging", "cmake")

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)
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
    return any(header == entry or (entry.endswith("/") and header.startswith(entry))
               for entry in LAYERS[folder])


def layers(path, text):
    """Knowledge goes one way."""
    for found in INCLUDE.finditer(text):
        kind, header = found.groups()
        if kind == '"' and not knows(path, header):
            yield f"{path}:{line_of(text, found.start())}: may not know {header}"


def port_headers(path, text):
    """The ports know plain types only."""
    for found in INCLUDE.finditer(text):
        kind, header = found.groups()
        plain = header in PORTABLE_HEADERS if kind == "<" else re.fullmatch(r"platform/\w+\.h", header)
        if not plain:
            yield f"{path}:{line_of(text, found.start())}: a port may not know {header}"


def missing_tests(root):
    """Tests mirror sources."""
    for path, _ in sources(root, PORTABLE, {".cpp"}):
        test = "tests/" + path.removesuffix(".cpp") + "_test.cpp"
        if path not in UNTESTED and not (root / test).is_file():
            yield f"{path}: has no {test}"
    for path, reason in UNTESTED.items():
        if not reason or not (root / path).is_file():
            yield f"{path}: an exception for a file that is not there, or without a reason"


def tests_without_build(root):
    """Every test stands in a description of the build."""
    builds = [path for path in (root / "tests").rglob("*")
              if path.name == "CMakeLists.txt" or path.suffix == ".cmake"]
    named = set(re.findall(r"\w+", "\n".join(path.read_text(encoding="utf-8") for path in builds)))
    for path, _ in sources(root, ["tests"], {".cpp", ".mm", ".py"}):
        name = pathlib.Path(path).stem
        if re.match(r"test_|.*_test$", name) and name not in named:
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
    for path, text in sources(root, PORTABLE, code):
        yield from foreign_names(path, text)
        yield from layers(path, text)
    for path, text in sources(root, ["platform"], {".h"}):
        if path.count("/") == 1:
            yield from port_headers(path, text)
    yield from missing_tests(root)
    yield from tests_without_build(root)
    for path, text in sources(root, CHECKED_FOLDERS, SOURCES):
        yield from long_files(path, text)
        if path.startswith("tests/") and path.endswith(".cpp"):
            yield from switched_off_tests(path, text)


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: check_house.py ROOT")
    found = list(offences(pathlib.Path(sys.argv[1])))
    print("\n".join(found) if found else "The house is in order.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
