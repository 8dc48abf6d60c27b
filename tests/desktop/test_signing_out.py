#!/usr/bin/python3
"""The sign-in panel after a sign-out, and after a session that the service has ended."""

import unittest

import desk
from desk.local_service import PARTICIPANTS, REFRESH
from desk.notewick import NO_WORK, SIGNED_OUT, menu
from desk.story import Story


class ThePanel(Story):
    def close_panel(self, program):
        program.sign_in_panel.window.ask_to_close()
        program.sign_in_panel.wait_until_gone()

    def test_is_not_brought_back_by_an_answer_that_comes_after_the_sign_out(self):
        program = self.start_signed_in()
        asked = len(self.service.requests(PARTICIPANTS))
        self.service.fail(PARTICIPANTS, delay=5, status=403)
        program.choose("Reload participants")
        desk.wait_until(lambda: len(self.service.requests(PARTICIPANTS)) > asked, what="the request")
        program.choose("Sign out of VELK")
        self.close_panel(program)
        desk.wait_until(lambda: "Signed out meanwhile" in self.home.text("watch.log"), what="the late answer")
        program.wait_for_menu(menu(SIGNED_OUT, NO_WORK, signed_in=False))
        self.assertFalse(program.sign_in_panel.shown)

    def test_takes_the_keyboard_once_after_the_session_has_ended(self):
        self.assertEqual(self.start_signed_in().quit(), 0)
        self.service.fail(REFRESH, status=401)
        program = self.start()
        panel = program.sign_in_panel.window
        desk.wait_until(lambda: panel.is_active, what="the panel having the keyboard")
        self.close_panel(program)
        elsewhere = desk.zenity("Chat").window()
        elsewhere.focus()
        program.choose("Reload participants")
        self.assertTrue(program.sign_in_panel.panel.find("Email", "text"))
        self.assertTrue(elsewhere.is_active)
        program.choose("Sign in to VELK…")
        desk.wait_until(lambda: program.sign_in_panel.window.is_active, what="the panel having the keyboard")


if __name__ == "__main__":
    unittest.main()
