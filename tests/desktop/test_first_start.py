#!/usr/bin/python3
"""The user signs in, and stays signed in; what the program writes meanwhile."""

import unittest

import desk
from desk import local_service, notifications, screen
from desk.local_service import EMAIL, PASSWORD
from desk.notewick import NO_WORK, SIGNED_OUT, WATCHING, menu, stored_token
from desk.story import Story


class SigningIn(Story):
    def test_is_asked_for_at_the_first_start_and_done_by_the_keyboard_alone(self):
        program = self.start()
        self.wait_until_active(program.sign_in_panel.window)
        program.wait_for_menu(menu(SIGNED_OUT, NO_WORK, signed_in=False))
        screen.type_text(EMAIL)
        screen.press("Tab")
        screen.type_text(PASSWORD)
        screen.press("Return")
        program.sign_in_panel.wait_until_gone()
        program.wait_for_menu(menu(WATCHING, NO_WORK))
        self.wait_for_notification("VELK Notewick", f"Signed in as {EMAIL}.")

    def test_lasts_over_a_restart(self):
        program = self.start_signed_in()
        item = program.tray
        self.assertEqual((program.quit(), program.output), (0, ""))
        desk.wait_until(lambda: not item.exists, what="the end of its item")
        notifications.clear()
        again = self.start()
        again.wait_for_menu(menu(WATCHING, NO_WORK))
        again.widget.window
        self.assertFalse(again.sign_in_panel.shown)
        greetings = [n for n in notifications.everything() if not n.body.startswith("Screen access on")]
        self.assertEqual(greetings, [])

    def test_takes_the_keyboard_once_when_the_session_has_ended(self):
        self.assertEqual(self.start_signed_in().quit(), 0)
        self.service.fail(local_service.REFRESH, status=401)
        program = self.start()
        self.wait_until_active(program.sign_in_panel.window)
        program.sign_in_panel.window.ask_to_close()
        program.sign_in_panel.wait_until_gone()
        work = desk.xterm("the user's work").window()
        work.focus()
        program.choose("Reload participants")
        self.assertTrue(program.sign_in_panel.panel.find("Email", "text"))
        self.assertTrue(work.is_active)
        program.choose("Sign in to VELK…")
        self.wait_until_active(program.sign_in_panel.window)


class WhatIsWritten(Story):
    def test_keeps_the_token_in_the_secret_store_alone(self):
        program = self.start_signed_in()
        program.widget.write_note("Called about rent")
        self.service.wait_for_notes("Called about rent")
        token = stored_token()
        self.assertIsNotNone(token)
        self.assertNotEqual(self.home.files_with("Tobias"), [], "the search finds what is there")
        for secret in (token, self.service.bearer(), PASSWORD):
            self.assertEqual(self.home.files_with(secret), [])
            for view in ("environ", "cmdline"):
                with open(f"/proc/{program.pid}/{view}", "rb") as file:
                    self.assertNotIn(secret.encode(), file.read())
            self.assertNotIn(secret, program.output)


if __name__ == "__main__":
    unittest.main()
