"""Waiting for conditions."""

import os
import subprocess
import time

LIMIT = 30.0  # seconds; a loaded machine takes many times as long as a quiet one
STEP, LONGEST_STEP = 0.02, 0.2  # seconds between two looks


class TimedOut(AssertionError):
    pass


def wait_until(condition, timeout=LIMIT, what=None):
    """Calls condition until its value is true and returns that value; the longer it waits, the less often.

    An exception of the condition counts as "not yet" until the time is over, then it is the cause of
    TimedOut. A picture of the screen is then left among the session's logs (see the option --keep).
    """
    started = time.monotonic()
    while True:
        cause = None
        try:
            value = condition()
            if value:
                return value
        except Exception as error:  # the world is still on its way
            cause = error
        waited = time.monotonic() - started
        if waited > timeout:
            raise TimedOut(f"{what or 'a condition'} did not come within {timeout} s{_picture()}") from cause
        time.sleep(min(max(STEP, waited / 10), LONGEST_STEP))


def _picture():
    folder = os.environ.get("NOTEWICK_SESSION_LOGS")
    if not folder:
        return ""
    name = f"gave-up-{os.getpid()}-{time.monotonic_ns()}.png"
    path = os.path.join(folder, name)
    tool = ["grim", path] if "SWAYSOCK" in os.environ else ["import", "-window", "root", path]
    done = subprocess.run(tool, stderr=subprocess.DEVNULL, timeout=10, check=False)
    return f" (picture: {name})" if done.returncode == 0 else ""
