"""How long the main loop of a program leaves a question unanswered."""

import time

from desk.waiting import TimedOut

PERIOD = 0.01  # seconds between two questions
BEATS = 5  # between two looks at what is waited for, which costs the program more than a beat
_PATIENCE = 600  # seconds


class Pulse:
    """Asks a program's tray item for its name, again and again.

    Qt's main loop answers, so the longest wait is the longest stall of menu and widget, together with the time
    for which the machine lets programs wait.
    """

    def __init__(self, item):
        self.longest = 0.0  # seconds
        self._item = item

    def beat(self):
        asked = time.monotonic()
        self._item.read("Id", timeout=_PATIENCE)
        self.longest = max(self.longest, time.monotonic() - asked)


def beat_until(condition, pulses):
    """Asks all of them, turn and turn about, until the condition holds."""
    deadline = time.monotonic() + _PATIENCE
    while not condition():
        for _ in range(BEATS):
            for pulse in pulses:
                pulse.beat()
            time.sleep(PERIOD)
        if time.monotonic() > deadline:
            raise TimedOut(f"what was waited for did not come within {_PATIENCE} s")
