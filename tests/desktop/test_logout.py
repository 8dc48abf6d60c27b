#!/usr/bin/python3
"""The desktop's session manager ends the program, as it does at a logout."""

import tempfile
import unittest

import desk
from desk.notewick import stored_token
from desk.session_manager import RESTART_NEVER, SessionManager
from desk.story import Story


class ALogout(Story):
    def setUp(self):
        super().setUp()
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.manager = SessionManager(folder.name)
        self.addCleanup(self.manager.close)

    def start(self):
        return super().start(**self.manager.environment)

    def test_ends_the_program_and_keeps_the_notes_the_sign_in_and_the_widget(self):
        program = self.start_signed_in()
        self.service.fail(status=503)
        program.widget.write_note("Called about rent")
        desk.wait_until(lambda: self.home.list("outbox.json"), what="the note in the outbox")
        self.manager.save()
        self.manager.end()
        self.assertEqual(program.wait(), 0, program.output)
        self.assertEqual([note["input"] for note in self.home.list("outbox.json")], ["Called about rent"])
        self.assertIsNotNone(stored_token())
        self.assertEqual(self.home.setting("VELKWidgetVisible"), "true")

    def test_that_is_called_off_leaves_the_program_as_it_was(self):
        program = self.start_signed_in()
        self.manager.save()
        program.widget.write_note("Called about rent")
        self.service.wait_for_notes("Called about rent")

    def test_is_not_followed_by_a_start_that_nobody_asked_for(self):
        self.start_signed_in()
        self.manager.save()
        self.assertEqual(self.manager.restart_style, RESTART_NEVER)


if __name__ == "__main__":
    unittest.main()
