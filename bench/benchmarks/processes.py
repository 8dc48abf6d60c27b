"""What Linux tells of a running program."""

import os
import re
import struct
import tempfile
import time
from pathlib import Path

from benchmarks.programs import BUILD
from desk import wait_until
from desk.waiting import LIMIT

MEGABYTE = 1e6
_TICKS = os.sysconf("SC_CLK_TCK")


def processor_seconds(pid):
    """Of processor time since its start, with the threads that have ended; in steps of a hundredth."""
    fields = Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / _TICKS


def processor_time(pid):
    """The same to the nanosecond, of the threads that run now."""
    used = (path.read_text() for path in Path(f"/proc/{pid}/task").glob("*/schedstat"))
    return sum(int(text.split()[0]) for text in used) / 1e9


def wake_ups(pid):
    """How often its threads have gone to sleep since they were started."""
    status = (path.read_text() for path in Path(f"/proc/{pid}/task").glob("*/status"))
    return sum(int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", text, re.MULTILINE)[1]) for text in status)


def memory(pid):
    """Megabytes: the proportional set size, and what the program has written to by itself."""
    rollup = Path(f"/proc/{pid}/smaps_rollup").read_text()
    sizes = {name: int(size) / 1024 for name, size in re.findall(r"^(\w+):\s+(\d+) kB", rollup, re.MULTILINE)}
    return sizes["Pss"], sizes["Private_Dirty"]


def descriptors(pid):
    return len(os.listdir(f"/proc/{pid}/fd"))


def is_at_rest(pid):
    """Whether the program has slept for two seconds, instead of waiting for a processor."""

    def activity():
        state = Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()[0]
        return state, Path(f"/proc/{pid}/schedstat").read_text()

    before = activity()
    time.sleep(2)
    return before[0] == "S" and activity() == before


def wait_for_rest(pid):
    wait_until(lambda: is_at_rest(pid), 2 * LIMIT, "rest")


class DiskCount:
    """What a program writes to its files, and how often it has the disk confirm it.

    Start the program with this environment.
    """

    _LIBRARY = BUILD / "bench" / "libdisk_count.so"
    _NUMBERS = struct.Struct("=QQ")

    def __init__(self):
        self._path = Path(tempfile.mkstemp(prefix="disk-")[1])
        self._path.write_bytes(bytes(self._NUMBERS.size))
        self.environment = {"LD_PRELOAD": str(self._LIBRARY), "DISK_COUNT": str(self._path)}

    def so_far(self):
        """The megabytes written and the number of confirmations."""
        written, confirmations = self._NUMBERS.unpack(self._path.read_bytes())
        return written / MEGABYTE, confirmations
