"""Test programs that hold every chosen mutant behind a switch."""

import collections
import os
import re
import resource
import shutil
import subprocess
import sys

from mutation.places import ROOT

WORK = ROOT / "build" / "mutants"
TREE = WORK / "tree"
PROGRAMS = ("core_tests", "client_ui_tests", "simulated_day")

RUNTIME_HEADER = """#pragma once
#include <type_traits>
namespace mutants {
inline int chosen = 0;
inline bool reached[100000];
constexpr bool on(int id) {
    if (std::is_constant_evaluated()) return false;
    reached[id] = true;
    return chosen == id;
}
}
"""

# Appended to one file of the fakes, which every test program holds.
RUNTIME_SOURCE = """
#include <gtest/gtest.h>
#include <cstdlib>
#include <fstream>
namespace {
class ReachedMutants : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        for (bool& each : mutants::reached) each = false;
    }
    void OnTestEnd(const testing::TestInfo& test) override {
        std::ofstream out(std::getenv("MUTANTS_REACHED"), std::ios::app);
        out << test.test_suite_name() << '.' << test.name() << ' ' << test.result()->elapsed_time();
        for (int id = 0; id < 100000; ++id)
            if (mutants::reached[id]) out << ' ' << id;
        out << '\\n';
    }
};
const bool ready = [] {
    if (const char* id = std::getenv("MUTANT")) mutants::chosen = std::atoi(id);
    if (std::getenv("MUTANTS_REACHED"))
        testing::UnitTest::GetInstance()->listeners().Append(new ReachedMutants);
    return true;
}();
}
"""


def changed_text(path, mutants):
    """The file with every mutant behind its switch."""
    source = (ROOT / path).read_bytes()

    def render(start, end, within=None):
        inner = [
            each
            for each in mutants
            if start <= each.start
            and each.end <= end
            and each is not within
            and not (within and each.start <= within.start and within.end <= each.end)
        ]
        outermost = [
            each
            for each in inner
            if not any(
                other is not each and other.start <= each.start and each.end <= other.end for other in inner
            )
        ]
        text, at = "", start
        for each in sorted(outermost, key=lambda mutant: mutant.start):
            text += source[at : each.start].decode() + each.rendered(
                lambda a, b, each=each: render(a, b, each)
            )
            at = each.end
        return text + source[at:end].decode()

    return '#include "mutants.h"\n' + render(0, len(source))


def compiles(path):
    return (
        subprocess.run(
            ["clang++-16", "-std=c++20", "-w", "-fsyntax-only", f"-I{TREE}", str(TREE / path)],
            capture_output=True,
        ).returncode
        == 0
    )


def write(path, mutants):
    """Writes the changed file, without the changes that are no C++; returns those."""
    (TREE / path).write_text(changed_text(path, mutants))
    if compiles(path):
        return []
    if len(mutants) == 1:
        shutil.copy(ROOT / path, TREE / path)
        return mutants
    half = len(mutants) // 2
    wrong = write(path, mutants[:half]) + write(path, mutants[half:])
    right = [each for each in mutants if each not in wrong]
    (TREE / path).write_text(changed_text(path, right) if right else (ROOT / path).read_text())
    return wrong


def make_tree():
    shutil.rmtree(TREE, ignore_errors=True)
    files = subprocess.check_output(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, text=True)
    for name in files.splitlines():
        if (ROOT / name).is_file():
            (TREE / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(ROOT / name, TREE / name)
    (TREE / "mutants.h").write_text(RUNTIME_HEADER)
    with open(TREE / "tests/support/world.cpp", "a", encoding="utf-8") as world:
        world.write('\n#include "mutants.h"' + RUNTIME_SOURCE)


def build():
    options = [
        "-DCMAKE_CXX_COMPILER=clang++-16",
        "-DCMAKE_BUILD_TYPE=RelWithDebInfo",
        "-DCMAKE_CXX_FLAGS=-D_GLIBCXX_ASSERTIONS -O1 -g0 -w",
    ]
    if shutil.which("ccache"):
        options.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
    subprocess.run(
        ["cmake", "-S", TREE, "-B", WORK / "build", "-G", "Ninja", *options],
        check=True,
        stdout=subprocess.DEVNULL,
    )
    subprocess.run(
        ["cmake", "--build", WORK / "build", "--target", *PROGRAMS], check=True, stdout=subprocess.DEVNULL
    )


def run(program, mutant=None, tests=None, reached=None, limit=300.0):
    """Whether the tests pass. A program that crashes, grows without bound or never ends does not."""
    environment = dict(os.environ)
    if mutant:
        environment["MUTANT"] = str(mutant.id)
    if reached:
        environment["MUTANTS_REACHED"] = str(reached)
    command = [WORK / "build/tests" / program, "--gtest_brief=1", "--gtest_fail_fast"]
    if tests:
        (WORK / "flags").mkdir(exist_ok=True)
        flags = WORK / "flags" / f"{program}-{mutant.id}"
        flags.write_text("--gtest_filter=" + ":".join(tests))
        command.append(f"--gtest_flagfile={flags}")
    try:
        done = subprocess.run(
            command,
            env=environment,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
            timeout=limit,
            check=False,
            preexec_fn=bounded_memory,
        )
        return done.returncode == 0
    except subprocess.TimeoutExpired:
        return False


def bounded_memory():
    resource.setrlimit(resource.RLIMIT_AS, (4 << 30, 4 << 30))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def tests_by_mutant():
    """For every mutant its tests, the quickest first, as (milliseconds, program, test)."""
    tests = collections.defaultdict(list)
    for program in PROGRAMS:
        reached = WORK / f"{program}.reached"
        reached.unlink(missing_ok=True)
        if not run(program, reached=reached):
            sys.exit(f"{program} fails without a mutant.")
        for line in reached.read_text().splitlines():
            name, time, *ids = line.split()
            for each in ids:
                tests[int(each)].append((int(time), program, name))
    return {each: sorted(them) for each, them in tests.items()}


def is_caught(mutant, tests):
    """A mutant that no test seems to reach may still be reached by the child process of a death test."""
    if not tests:
        return not all(run(program, mutant) for program in PROGRAMS)
    for several in (tests[:20], tests[20:]):
        for program in PROGRAMS:
            names = [name for _, of, name in several if of == program]
            time = sum(each for each, of, _ in several if of == program) / 1000
            if names and not run(program, mutant, names, limit=20 + 10 * time):
                return True
    return False
