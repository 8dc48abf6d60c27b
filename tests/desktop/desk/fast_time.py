"""Time that runs faster, for programs that know nothing of it."""

import contextlib
import os
import signal
import subprocess
from pathlib import Path

from desk import programs
from desk.waiting import wait_until

DAY = "2026-03-02"
MORNING = f"{DAY} 09:00:00"


def _remove_orphans():
    """What a killed keeper left would be in the way of the next one with its process id."""
    for shared in Path("/dev/shm").glob("faketime_shm_*"):
        owner = shared.name.rpartition("_")[2]
        if not Path("/proc", owner).exists():
            for path in (shared, shared.with_name(f"sem.faketime_sem_{owner}")):
                with contextlib.suppress(PermissionError):  # another user's is in nobody's way
                    path.unlink(missing_ok=True)


class _Keeper(programs.Program):
    """Holds the clock that programs share; ends when its own program does, and takes the clock away then."""

    def __init__(self, start, factor):
        # Without the variable the clock would start anew in every program.
        command = ["faketime", "-m", "-f", f"@{start} x{factor}", "sleep", "infinity"]
        super().__init__(command, {"FAKETIME_DONT_RESET": "1"})

    def child(self):
        return int(Path(f"/proc/{self.pid}/task/{self.pid}/children").read_text().split()[0])

    def clock(self):
        """What its program inherited; None before that."""
        variables = Path(f"/proc/{self.child()}/environ").read_bytes().split(b"\0")
        pairs = (v.decode().partition("=") for v in variables if v.startswith((b"LD_PRELOAD=", b"FAKETIME")))
        found = {name: value for name, _, value in pairs}
        return found if "FAKETIME" in found and "FAKETIME_SHARED" in found else None

    def close(self):
        if self.is_running:
            os.kill(self.child(), signal.SIGTERM)
            try:
                self.wait(2)
            except subprocess.TimeoutExpired:
                pass  # as any other program then
        super().close()


class FastTime:
    """A clock that starts at 9 in the morning and runs `factor` times faster.

    Programs started with its environment share it: they count from the same instant, whenever they start.
    """

    def __init__(self, start=MORNING, factor=60):
        self.factor = factor
        _remove_orphans()
        self.environment = wait_until(_Keeper(start, factor).clock, what="the clock that runs faster")
