"""Time that runs faster, for programs that know nothing of it."""

from pathlib import Path

from desk import programs
from desk.waiting import wait_until

DAY = "2026-03-02"
MORNING = f"{DAY} 09:00:00"


class FastTime:
    """A clock that starts at 9 in the morning and runs sixty times faster.

    Programs started with its environment share it: they count from the same instant, whenever they start.
    """

    def __init__(self, start=MORNING, factor=60):
        self.factor = factor
        # Without the variable, "@" would start anew in every program.
        keeper = programs.start(
            "faketime", "-m", "-f", f"@{start} x{factor}", "sleep", "infinity",
            environment={"FAKETIME_DONT_RESET": "1"},
        )
        children = Path(f"/proc/{keeper.pid}/task/{keeper.pid}/children")

        def clock():
            variables = Path(f"/proc/{children.read_text().split()[0]}/environ").read_bytes().split(b"\0")
            pairs = (v.decode().partition("=") for v in variables if v.startswith((b"LD_PRELOAD=", b"FAKETIME")))
            found = {name: value for name, _, value in pairs}
            return found if "FAKETIME" in found and "FAKETIME_SHARED" in found else None

        self.environment = wait_until(clock, what="the clock that runs faster")
