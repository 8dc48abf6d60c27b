#!/usr/bin/python3
"""The X server ends under the program, as it does at every logout."""

import os
import subprocess
import unittest

import desk
from desk.notewick import stored_token
from desk.story import Story


class ADisplay:
    """An X server that a test may end; the session's own goes on."""

    def __init__(self):
        read, write = os.pipe()
        command = ["Xvfb", "-displayfd", str(write), "-nolisten", "tcp", "-noreset"]
        self._server = subprocess.Popen(command, pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as chosen:
            self.name = f":{chosen.readline().strip()}"

    def end(self):
        self._server.kill()
        self._server.wait()


class TheEndOfTheDisplay(Story):
    def setUp(self):
        super().setUp()
        self.display = ADisplay()
        self.addCleanup(self.display.end)

    def check_end_of(self, program):
        self.display.end()
        self.assertEqual(program.wait(), 1, program.output)
        self.assertIn("X11", program.output)

    def test_with_the_sign_in_panel_open_is_no_crash(self):
        program = self.start(DISPLAY=self.display.name)
        program.sign_in_panel.panel
        self.check_end_of(program)

    def test_with_the_widget_open_is_no_crash_and_keeps_the_sign_in_and_the_notes(self):
        program = self.start(DISPLAY=self.display.name)
        program.sign_in()
        self.service.fail(status=503)
        program.widget.write_note("Called about rent")
        desk.wait_until(lambda: self.home.list("outbox.json"), what="the note in the outbox")
        self.check_end_of(program)
        self.assertIsNotNone(stored_token())
        [note] = self.home.list("outbox.json")
        self.assertEqual(note["input"], "Called about rent")


if __name__ == "__main__":
    unittest.main()
