#!/usr/bin/python3
"""A desktop that has neither a tray nor a secret store. Runs in a session with --tray none --keyring none."""

import signal
import time
import unittest

import desk
from desk import screen, tray
from desk.local_service import PASSWORD
from desk.story import Story

COMPLAINT = (
    "No tray on this desktop: the menu is the context menu of the quick-note panel "
    "(right click, Menu key or Shift+F10).\n"
)
TIME_FOR_A_TRAY = 10  # seconds after the start; where there is none then, the program complains
NO_STORE = "No password store on this desktop: the sign-in lasts until you quit."


class ABareDesktop(Story):
    secret_store = False

    def test_has_the_menu_in_the_widget_and_the_sign_in_until_the_program_ends(self):
        program = self.start()
        self.assertTrue(program.sign_in_panel.panel.find(NO_STORE))
        program.sign_in_panel.sign_in()
        program.widget.write_note("Called about rent")
        self.service.wait_for_notes("Called about rent")
        desk.wait_until(lambda: self.home.list("outbox.json") == [], what="a menu without notes")
        program.wait_for_output(COMPLAINT)
        program.widget.window.focus()
        # Signed in, the menu begins with what can only be read; its second command hides the widget.
        screen.press("Menu", "Down", "Down", "Return")
        program.widget.wait_until_gone()
        self.assertEqual(self.start().wait(), 0)
        self.wait_until_active(program.widget.window)
        self.check_that_no_secret_is_written(program)
        program.signal(signal.SIGTERM)
        self.assertEqual((program.wait(), program.output), (0, COMPLAINT))
        self.assertTrue(self.start().sign_in_panel.window)

    def check_that_no_secret_is_written(self, program):
        self.assertNotEqual(self.home.files_with("Called about rent"), [], "the search finds what is there")
        for secret in (self.service.bearer(), PASSWORD):
            self.assertEqual(self.home.files_with(secret), [])
            self.assertNotIn(secret, program.output)
        self.assertEqual(self.home.words_like_tokens(), [])

    def test_is_in_the_tray_whenever_one_comes(self):
        started = time.monotonic()
        program = self.start()
        program.sign_in_panel.window.close()
        self.assertFalse(tray.shows(program))
        for _ in range(2):
            host = tray.start_host()
            desk.wait_until(lambda: tray.shows(program), what="the icon in the tray")
            host.close()
            desk.wait_until(
                lambda: not tray.has_host() and not tray.shows(program), what="the end of the tray"
            )
        said = program.output
        has_had_time = time.monotonic() - started >= TIME_FOR_A_TRAY
        self.assertIn(said, ("", COMPLAINT) if has_had_time else ("",))


if __name__ == "__main__":
    unittest.main()
