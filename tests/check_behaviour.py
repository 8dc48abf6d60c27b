#!/usr/bin/env python3
"""Checks that the list of behaviours names all suites of tests, and none that does not exist.

    check_behaviour.py LIST FOLDER TEST_PROGRAM...

LIST is a Markdown file whose tables have two columns: what the program does, and in back quotes the
suites that prove it. A suite is that of a GoogleTest program, or a file of tests in Python below FOLDER.
Exits with 1 when the list and the tests do not agree, or a row says nothing.
"""

import pathlib
import re
import subprocess
import sys

ROW = re.compile(r"^\|(.*)\|\s*$")
RULER = re.compile(r"^[\s|:-]+$")


def rows(text):
    """(line number, behaviour, suites) of every row below a table's head."""
    head_seen = False
    for number, line in enumerate(text.splitlines(), start=1):
        match = ROW.match(line)
        if not match:
            head_seen = False
        elif RULER.match(line):
            head_seen = True
        elif head_seen:
            behaviour, _, proof = match.group(1).rpartition("|")
            yield number, behaviour.strip(), re.findall(r"`([^`]+)`", proof)


def suites_of_program(program):
    """The suites of a GoogleTest program."""
    listing = subprocess.run([program, "--gtest_list_tests"], check=True, capture_output=True, text=True)
    return set(re.findall(r"^(\S+)\.$", listing.stdout, re.MULTILINE))


def suites_of_folder(folder):
    """The files of tests in Python."""
    names = [path.name for path in pathlib.Path(folder).rglob("*.py")]
    return {name for name in names if name.startswith("test_") or name.endswith("_test.py")}


def faults(text, known):
    """What is wrong with the list, one line each."""
    named = set()
    for number, behaviour, suites in rows(text):
        if not behaviour or not suites:
            yield f"line {number}: needs a behaviour and a suite in back quotes"
        yield from (f"line {number}: there is no suite {suite}" for suite in suites if suite not in known)
        named.update(suites)
    yield from (f"no line names the suite {suite}" for suite in sorted(known - named))


def main():
    listed, folder, *programs = sys.argv[1:]
    known = suites_of_folder(folder).union(*map(suites_of_program, programs))
    found = list(faults(pathlib.Path(listed).read_text(encoding="utf-8"), known))
    print("\n".join(f"{listed}: {fault}" for fault in found) if found else f"{len(known)} suites, all named.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
