"""What windows of the X server and of sway have in common."""

from collections import namedtuple

from desk.waiting import wait_until

Geometry = namedtuple("Geometry", "x y width height")


class AnyWindow:
    """Every property is read afresh; of a window that is gone, all are empty."""

    def __init__(self, number):
        self.number = number

    def __eq__(self, other):
        return type(other) is type(self) and self.number == other.number

    def __repr__(self):
        return f"<window {self.number} {self.title!r}>"

    def focus(self):
        """Makes it the active window, and waits until it is."""
        self._activate()
        wait_until(lambda: self.is_active, what=f"{self} being active")

    def close(self):
        self.ask_to_close()
        wait_until(lambda: not self.exists, what=f"the end of {self}")
