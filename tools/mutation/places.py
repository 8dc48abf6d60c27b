"""The places of the portable core that a rule can change."""

import collections
import hashlib
import pathlib
import re
import subprocess
import sys

import clang.cindex
from clang.cindex import CursorKind as Kind

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent

FLIPPED = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
BLOCKS = {Kind.COMPOUND_STMT, Kind.IF_STMT, Kind.FOR_STMT, Kind.WHILE_STMT, Kind.CXX_FOR_RANGE_STMT}
FUNCTIONS = {Kind.CXX_METHOD, Kind.FUNCTION_DECL, Kind.CONSTRUCTOR, Kind.DESTRUCTOR, Kind.FUNCTION_TEMPLATE}
NUMBERS = {Kind.INTEGER_LITERAL, Kind.FLOATING_LITERAL, Kind.CXX_BOOL_LITERAL_EXPR}


class Mutant:
    """One change of one place: [start, end) of a file, and the parts that the change moves around."""

    def __init__(self, path, rule, start, end, parts, function, text):
        self.path, self.rule, self.start, self.end = path, rule, start, end
        self.parts, self.function = parts, function
        self.text = " ".join(text.split())
        self.id = 0  # in the order of choice, from 1
        self.nth = 0  # among places of one text

    def name(self):
        return f"{self.path}: {self.function}: {self.rule}: {self.text}"

    def key(self):
        """The same wherever the place moves to."""
        return f"{self.function}|{self.rule}|{self.text}|{self.nth}"

    def rank(self, seed):
        return hashlib.sha256(f"{seed}|{self.key()}".encode()).hexdigest()

    def rendered(self, render):
        on = f"mutants::on({self.id})"
        parts = [render(*part) for part in self.parts]
        if self.rule == "comparison flipped":
            left, operator, right = parts
            return f"({on} ? ({left} {FLIPPED[operator.strip()]} {right}) : ({left} {operator} {right}))"
        if self.rule == "statement dropped":
            return f"{{ if (!{on}) {parts[0]} }}"
        if self.rule == "calls swapped":
            return f"if ({on}) {{ {parts[1]} {parts[0]} }} else {{ {parts[0]} {parts[1]} }}"
        value = parts[0].strip()
        changed = {"true": "false", "false": "true"}.get(value, f"{value} + 1")
        return f"({on} ? {changed} : {value})"


def core_sources():
    text = (ROOT / "CMakeLists.txt").read_text()
    files = re.search(r"add_library\(notewick_core STATIC(.*?)\)", text, re.DOTALL).group(1).split()
    if not files:
        sys.exit("There is no source to change.")
    return files


def compiler_options():
    resources = subprocess.check_output(["clang++-16", "-print-resource-dir"], text=True).strip()
    return ["-std=c++20", f"-I{ROOT}", f"-resource-dir={resources}"]


class Finder:
    """Finds every place of one file that a rule can change."""

    def __init__(self, path):
        self.path = path
        self.bytes = (ROOT / path).read_bytes()
        self.found = []
        self.seen = set()

    def text(self, start, end):
        return self.bytes[start:end].decode()

    def add(self, rule, start, end, parts, function):
        if (rule, start, end) not in self.seen:
            self.seen.add((rule, start, end))
            self.found.append(Mutant(self.path, rule, start, end, parts, function, self.text(start, end)))

    def run(self):
        unit = clang.cindex.Index.create().parse(str(ROOT / self.path), args=compiler_options())
        errors = [each for each in unit.diagnostics if each.severity >= clang.cindex.Diagnostic.Error]
        if errors:
            sys.exit(f"{self.path}: {errors[0]}")
        for cursor in unit.cursor.get_children():
            if cursor.location.file and cursor.location.file.name == str(ROOT / self.path):
                self.visit(cursor, None)
        return self.found

    def visit(self, cursor, function):
        if not has_known_kind(cursor):
            return
        if cursor.kind in FUNCTIONS:
            function = cursor.spelling
        if cursor.kind == Kind.VAR_DECL and self.text(*span(cursor)).lstrip().startswith(
            ("constexpr", "static constexpr")
        ):
            return
        if function:
            self.comparison(cursor, function)
            self.constant(cursor, function)
            if cursor.kind in BLOCKS:
                self.statements(cursor, function)
        for child in cursor.get_children():
            if cursor.kind == Kind.CASE_STMT and child == next(cursor.get_children()):
                continue
            self.visit(child, function)

    def comparison(self, cursor, function):
        if cursor.kind not in (Kind.BINARY_OPERATOR, Kind.CALL_EXPR, Kind.UNEXPOSED_EXPR):
            return
        start, end = span(cursor)
        spans = sorted(span(child) for child in cursor.get_children())
        spans = [each for each in spans if start <= each[0] and each[1] <= end]
        if len(spans) < 2:
            return
        left, right = spans[0], spans[-1]
        operator = self.text(left[1], right[0])
        if left[0] == start and right[1] == end and operator.strip() in FLIPPED:
            self.add("comparison flipped", start, end, [left, (left[1], right[0]), right], function)

    def constant(self, cursor, function):
        start, end = span(cursor)
        named = cursor.kind == Kind.DECL_REF_EXPR and re.fullmatch(
            r"(\w+::)*k?[A-Z][A-Z_0-9]{2,}", self.text(start, end)
        )
        number = cursor.kind in NUMBERS and re.fullmatch(r"true|false|[\d.][\w.']*", self.text(start, end))
        if number or named:
            self.add("constant changed", start, end, [(start, end)], function)

    def statements(self, block, function):
        before = None
        for child in block.get_children():
            statement = self.statement(child)
            if statement:
                self.add("statement dropped", *statement, [statement], function)
            call = statement if statement and is_call(child) else None
            if block.kind == Kind.COMPOUND_STMT and before and call:
                self.add("calls swapped", before[0], call[1], [before, call], function)
            before = call

    def statement(self, cursor):
        """The span of a statement that can be left out, with its semicolon; else nothing."""
        start, end = span(cursor)
        after = re.match(rb"\s*;", self.bytes[end:])
        if not after or cursor.kind == Kind.DECL_STMT:
            return None
        if cursor.kind == Kind.RETURN_STMT and self.text(start, end) != "return":
            return None
        if (
            cursor.kind in (Kind.RETURN_STMT, Kind.BREAK_STMT, Kind.CONTINUE_STMT)
            or cursor.kind.is_expression()
        ):
            return start, end + after.end()
        return None


def has_known_kind(cursor):
    """The Python bindings lack a few kinds, such as concepts, that the library itself knows."""
    try:
        return cursor.kind is not None
    except ValueError:
        return False


def span(cursor):
    return cursor.extent.start.offset, cursor.extent.end.offset


def is_call(cursor):
    while cursor.kind == Kind.UNEXPOSED_EXPR:
        cursor = next(cursor.get_children(), None)
        if cursor is None:
            return False
    return cursor.kind == Kind.CALL_EXPR and not cursor.spelling.startswith("operator")


def find(path):
    return Finder(path).run()


def chosen(candidates, count, seed):
    """The places whose rank is lowest; of two that cross each other the first."""
    taken = []
    for mutant in sorted(candidates, key=lambda each: each.rank(seed)):
        if len(taken) == count:
            break
        if not any(crosses(mutant, other) for other in taken if other.path == mutant.path):
            taken.append(mutant)
            mutant.id = len(taken)
    return taken


def crosses(one, other):
    return (
        one.start < other.start < one.end < other.end
        or other.start < one.start < other.end < one.end
        or (one.start, one.end) == (other.start, other.end)
    )


def number_equal_places(candidates):
    seen = collections.Counter()
    for mutant in candidates:
        key = (mutant.function, mutant.rule, mutant.text)
        mutant.nth = seen[key]
        seen[key] += 1
