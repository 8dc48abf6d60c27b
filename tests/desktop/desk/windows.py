"""Windows: of the X server in an X session, of sway in a Wayland session.

Both kinds have title, pid, geometry, exists, is_active, focus(), ask_to_close() and close(); those of X have
class_name, states, types, is_on_all_desktops, retitle() and move() besides.
"""

import contextlib
import os
import signal

from desk import sway_windows, x_windows
from desk.waiting import LIMIT, wait_until

_desktop = sway_windows if "SWAYSOCK" in os.environ else x_windows

everything = _desktop.everything


def find(title=None, pid=None):
    """The first window with exactly this title, of this process; None when there is none."""
    fits = (w for w in everything() if title in (None, w.title) and pid in (None, w.pid))
    return next(fits, None)


def wait_for(title=None, pid=None, timeout=LIMIT):
    return wait_until(lambda: find(title, pid), timeout, f"a window {title or ''} of process {pid or 'any'}")


def wait_until_gone(title=None, pid=None, timeout=LIMIT):
    wait_until(lambda: not find(title, pid), timeout, f"the end of window {title or ''}")


@contextlib.contextmanager
def stopped_manager():
    """The window manager, or sway, answers nobody while the `with` block runs."""
    # sway tells its process id in the name of its socket.
    manager = int(os.environ.get("NOTEWICK_SESSION_WINDOW_MANAGER") or os.environ["SWAYSOCK"].split(".")[-2])
    os.kill(manager, signal.SIGSTOP)
    try:
        yield
    finally:
        os.kill(manager, signal.SIGCONT)
