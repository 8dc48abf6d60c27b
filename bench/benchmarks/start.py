"""What a start costs, and what a sample."""

import resource
import subprocess
import time

import desk
from benchmarks import processes
from benchmarks.programs import BARE_QT, BUILD, EMPTY
from benchmarks.series import Reading
from benchmarks.tray_host import TrayHost
from benchmarks.user import SignedIn
from desk.notewick import PROGRAM

WINDOWS = 8
TITLE = "RE: support hours — Tobias Hargreave"
SELF_TESTS = 20  # a round; one alone takes a few clock ticks


def _launched(host, start):
    """Milliseconds until the icon is at the tray's host, and those of processor time until then."""
    started = time.monotonic()
    program = start()
    registered = host.registration(program)
    used = processes.processor_time(program.pid)
    processes.wait_for_rest(program.pid)
    program.close()
    return 1000 * (registered - started), 1000 * used


def launch(rounds):
    """Signed in, beside a bare tray icon."""
    user, host = SignedIn(), TrayHost()
    for _ in range(rounds):
        own = _launched(host, user.start)
        beside = _launched(host, lambda: desk.start(BARE_QT, "tray"))
        yield {"elapsed": Reading(own[0], beside[0]), "processor": Reading(own[1], beside[1])}


def _processor_milliseconds(*command):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    for _ in range(SELF_TESTS):
        subprocess.run(command, stdout=subprocess.DEVNULL, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return 1000 * (after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime) / SELF_TESTS


def self_test(rounds):
    """The self-test, beside an empty program with the same libraries."""
    for _ in range(rounds):
        yield {
            "processor": Reading(
                _processor_milliseconds(PROGRAM, "--selftest"), _processor_milliseconds(EMPTY)
            )
        }


def sample(rounds):
    """A sample of a program with eight windows, beside its round trips to the X server alone."""
    with desk.start(BARE_QT, "windows", WINDOWS, TITLE) as program:
        desk.wait_until(lambda: len(desk.windows.everything()) >= WINDOWS, what="the windows")
        program.window(f"{TITLE} {WINDOWS}").focus()
        command = [BUILD / "bench" / "sample_bench", str(rounds)]
        done = subprocess.run(command, capture_output=True, text=True, check=True)
    for line in done.stdout.splitlines():
        _, _, elapsed, round_trips = map(float, line.split())
        yield {"elapsed": Reading(elapsed, round_trips)}
