#!/usr/bin/python3
"""A service that is not there, and one that does not answer."""

import signal
import unittest

import desk
from desk.notewick import NO_WORK, WATCHING, menu
from desk.story import Story

NOTE = "Called about rent"
WAITING = menu(WATCHING, NO_WORK, ["1 note waiting to send to VELK"])


class AnOutage(Story):
    def test_delivers_the_note_once_after_a_restart_in_the_middle(self):
        program = self.start_signed_in()
        self.service.stop()
        self.addCleanup(self.service.start)
        program.widget.write_note(NOTE)
        desk.wait_until(
            lambda: "onnect" in self.home.list("outbox.json")[0]["lastError"], what="the failed try"
        )
        self.assertEqual(program.quit(), 0)

        again = self.start()
        again.wait_for_menu(WAITING)
        self.assertFalse(again.sign_in_panel.shown)
        self.service.start()
        again.send_what_waits()
        again.wait_for_menu(menu(WATCHING, NO_WORK))
        self.assertEqual(self.service.inputs(), [NOTE])
        desk.wait_until(lambda: self.home.list("outbox.json") == [], what="the saved list")

    def test_leaves_menu_and_widget_usable_while_nothing_answers(self):
        """No wait here is as long as the minute after which a request that nobody answers fails."""
        program = self.start_signed_in()
        self.service.signal(signal.SIGSTOP)
        self.addCleanup(self.service.signal, signal.SIGCONT)
        program.widget.write_note(NOTE)
        program.choose("Reload participants")
        program.choose("Pause watching")
        program.wait_for_entry("Paused")
        program.widget.fill("The next note", 30)
        self.service.signal(signal.SIGCONT)
        self.service.wait_for_notes(NOTE)


if __name__ == "__main__":
    unittest.main()
