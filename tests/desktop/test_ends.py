#!/usr/bin/python3
"""The ends of the program that its user does not choose: a logout, and the end of the X server."""

import unittest

import desk
from desk.notewick import stored_token
from desk.session_manager import RESTART_NEVER, SessionManager
from desk.story import Story
from desk.x_server import XServer

NOTE = "Called about rent"


class AnEnd(Story):
    def write_note_that_waits(self, program):
        self.service.fail(status=503)
        program.widget.write_note(NOTE)
        desk.wait_until(lambda: self.home.list("outbox.json"), what="the note in the outbox")

    def check_that_all_is_kept(self):
        self.assertEqual([note["input"] for note in self.home.list("outbox.json")], [NOTE])
        self.assertIsNotNone(stored_token())
        self.assertIn("\nVELKWidgetVisible=true\n", self.home.settings.read_text())

    def test_by_a_logout_keeps_the_notes_the_sign_in_and_the_widget(self):
        manager = SessionManager(self.home.folder)
        self.addCleanup(manager.close)
        program = self.start_signed_in(**manager.environment)
        manager.save()
        self.assertEqual(manager.restart_style, RESTART_NEVER)
        program.widget.write_note("Written after a logout that was called off")
        self.service.wait_for_notes("Written after a logout that was called off")
        desk.wait_until(lambda: self.home.list("outbox.json") == [], what="the service's answer")
        self.write_note_that_waits(program)
        manager.save()
        manager.end()
        self.assertEqual(program.wait(), 0, program.output)
        self.check_that_all_is_kept()

    def test_losing_the_display_is_no_crash_and_keeps_the_notes_and_the_sign_in(self):
        server = XServer()
        self.addCleanup(server.close)
        program = self.start(DISPLAY=server.display)
        program.sign_in_panel.sign_in()
        self.write_note_that_waits(program)
        server.close()
        self.assertEqual(program.wait(), 1, program.output)
        self.assertIn("X11", program.output)
        self.check_that_all_is_kept()


if __name__ == "__main__":
    unittest.main()
