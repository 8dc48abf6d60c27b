#!/usr/bin/python3
"""The session bus dies, and with it the accessibility bus, while the program runs. Ends this session."""

import os
import signal
import unittest
from pathlib import Path

import desk
from desk import screen
from desk.story import Story


def session_bus():
    configuration = f"--config-file={Path(os.environ['HOME']).parent}/bus.conf"
    processes = Path("/proc").glob("[0-9]*/cmdline")
    return next(int(path.parent.name) for path in processes if configuration in path.read_text().split("\0"))


class ADyingSessionBus(Story):
    def test_ends_neither_the_program_nor_a_note(self):
        program = self.start_signed_in()
        program.widget.fill("Called about rent", 15)
        window = program.widget.window
        os.kill(session_bus(), signal.SIGKILL)
        window.focus()
        screen.press("ctrl+Return")
        self.service.wait_for_notes("Called about rent")
        desk.wait_until(lambda: self.home.list("outbox.json") == [], what="an empty outbox")
        program.signal(signal.SIGTERM)
        self.assertEqual(program.wait(), 0, program.output)


if __name__ == "__main__":
    unittest.main()
