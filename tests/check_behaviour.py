#!/usr/bin/env python3
"""Checks that every test named in the list of behaviours exists.

    check_behaviour.py LIST [--program TEST_PROGRAM]... [--python FOLDER]...

LIST is a Markdown file whose tables have two columns: a behaviour in words, and in back quotes the
tests that prove it. A test is "Suite.Test" of a GoogleTest program, or "file.py::Class.test" below
one of the Python folders. Exits with 1 when a test does not exist, a row has no test, a behaviour
stands twice, or there is no row at all.
"""

import argparse
import ast
import pathlib
import re
import subprocess
import sys

ROW = re.compile(r"^\|(.*)\|\s*$")
RULER = re.compile(r"^[\s|:-]+$")


def rows(text):
    """(line number, behaviour, tests) of every row below a table's head."""
    head_seen = False
    for number, line in enumerate(text.splitlines(), start=1):
        match = ROW.match(line)
        if not match:
            head_seen = False
        elif RULER.match(line):
            head_seen = True
        elif head_seen:
            cells = [cell.strip() for cell in re.split(r"(?<!\\)\|", match.group(1))]
            tests = re.findall(r"`([^`]+)`", cells[-1]) if len(cells) == 2 else []
            yield number, cells[0], tests


def tests_of_program(program):
    """The tests of a GoogleTest program; those with parameters under their plain names as well."""
    if not pathlib.Path(program).exists():
        sys.exit(f"{program} is not built")
    listing = subprocess.run([program, "--gtest_list_tests"], check=True, capture_output=True,
                             text=True).stdout
    names, suite = set(), ""
    for line in listing.splitlines():
        name = line.split("#")[0].strip()
        if line.startswith("  "):
            names.add(suite + name)
            plain_suite = re.sub(r"^\w+/(?=\w)|/\d+(?=\.)", "", suite)
            names.add(plain_suite + name.split("/")[0])
        elif name.endswith("."):
            suite = name
    return names


def tests_of_folder(folder):
    """"file.py::Class.test" for every test method in the Python files of a folder."""
    names = set()
    for path in sorted(pathlib.Path(folder).rglob("*.py")):
        for node in ast.parse(path.read_text(encoding="utf-8")).body:
            if isinstance(node, ast.ClassDef):
                names.update(f"{path.name}::{node.name}.{item.name}" for item in node.body
                             if isinstance(item, ast.FunctionDef) and item.name.startswith("test"))
    return names


def faults(text, known):
    """What is wrong with the list, one line each."""
    seen = {}
    for number, behaviour, tests in rows(text):
        if not behaviour or not tests:
            yield f"line {number}: needs a behaviour and a test in back quotes"
        if behaviour in seen:
            yield f"line {number}: says the same as line {seen[behaviour]}"
        seen.setdefault(behaviour, number)
        yield from (f"line {number}: there is no test {test}" for test in tests
                    if test not in known)
    if not seen:
        yield "the list is empty"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("list", type=pathlib.Path)
    parser.add_argument("--program", action="append", default=[])
    parser.add_argument("--python", action="append", default=[])
    options = parser.parse_args()
    known = set()
    for program in options.program:
        known |= tests_of_program(program)
    for folder in options.python:
        known |= tests_of_folder(folder)
    text = options.list.read_text(encoding="utf-8")
    found = [f"{options.list}: {fault}" for fault in faults(text, known)]
    print("\n".join(found) if found else f"{len(list(rows(text)))} behaviours, all with a test.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
