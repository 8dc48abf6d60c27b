"""The screen reader Orca; what it says is read from its log instead of being heard."""

import os
import re
import tempfile
from pathlib import Path

from desk import programs, screen
from desk.waiting import TimedOut, wait_until

_CUSTOMIZATION = """\
from orca import debug
debug.debugLevel = debug.LEVEL_INFO
debug.debugFile = open({log!r}, "w", buffering=1)
"""
# What ends with a blank is the echo of a key that was pressed.
_SPOKEN = re.compile(r"SPEECH OUTPUT: '(.*\S)'(?: voice=\w+)? ?\[?\{'established'")
_OF_THE_HOST = {"menu"}  # the window that xfce4-panel opens; whether it is told of is a matter of time


class Orca:
    def __init__(self):
        folder = Path(os.environ["XDG_DATA_HOME"], "orca")
        folder.mkdir(parents=True, exist_ok=True)
        self._log = Path(tempfile.mkdtemp(dir=os.environ["NOTEWICK_SESSION_LOGS"]), "orca.log")
        (folder / "orca-customizations.py").write_text(_CUSTOMIZATION.format(log=str(self._log)))
        self._heard = 0
        programs.start("orca", "--replace")
        self.hears("Screen reader on.")

    def _spoken(self):
        said = _SPOKEN.findall(self._log.read_text()) if self._log.exists() else []
        return [words for words in said if words not in _OF_THE_HOST]

    def hears(self, *words):
        """Waits until exactly this has been said since the last call, however slowly."""
        said = lambda: self._spoken()[self._heard :]
        try:
            wait_until(lambda: said() == list(words), what="the words")
        except TimedOut as late:
            raise AssertionError(f"Orca said {said()}, not {list(words)}") from late
        self._heard += len(words)

    def press(self, chord, *words):
        """Presses a key, and hears these words because of it."""
        screen.press(chord)
        self.hears(*words)
