"""How long the main loop of a program leaves a question unanswered."""

import time

from desk.waiting import TimedOut

PERIOD = 0.004  # seconds between two questions
_PATIENCE = 600  # seconds


class Pulse:
    """Asks a program's tray item for its tool tip, again and again.

    Qt's main loop answers, so the longest wait is the longest stall of menu and widget, together with the time
    for which the machine lets programs wait.
    """

    def __init__(self, item):
        self.longest = 0.0  # seconds
        self._item = item

    def beat(self):
        """The text of the tool tip."""
        asked = time.monotonic()
        text = str(self._item.read("ToolTip", timeout=_PATIENCE)[2])
        self.longest = max(self.longest, time.monotonic() - asked)
        return text


def beat_until(condition, pulse, others=()):
    """Beats until the condition holds for the tool tip of the first."""
    deadline = time.monotonic() + _PATIENCE
    while not condition(pulse.beat()):
        for other in others:
            other.beat()
        if time.monotonic() > deadline:
            raise TimedOut(f"the tool tip did not change within {_PATIENCE} s")
        time.sleep(PERIOD)
