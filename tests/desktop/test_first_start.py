#!/usr/bin/python3
"""The first start: the program meets a user who has never signed in."""

import stat
import unittest

import desk
from desk import local_service, screen
from desk.local_service import EMAIL, PASSWORD
from desk.notewick import NO_WORK, SIGNED_OUT, WATCHING, menu, stored_token
from desk.story import Story

SIGNED_OUT_MENU = menu(SIGNED_OUT, NO_WORK, signed_in=False)


class TheFirstStart(Story):
    def test_asks_to_sign_in_and_offers_the_menu_of_someone_signed_out(self):
        self.assertFalse(self.home.support.exists())
        program = self.start()
        desk.wait_until(lambda: program.sign_in_panel.window.is_active, what="the sign-in panel being active")
        program.wait_for_menu(SIGNED_OUT_MENU)
        disabled = [entry.label for entry in program.tray.menu() if not entry.enabled and not entry.separator]
        self.assertEqual(disabled, NO_WORK)
        self.assertFalse(program.widget.shown)
        self.assertTrue(self.home.support.is_dir())

    def test_signs_in_by_the_keyboard_alone(self):
        program = self.start()
        desk.wait_until(lambda: program.sign_in_panel.window.is_active, what="the sign-in panel being active")
        screen.type_text(EMAIL)
        screen.press("Tab")
        screen.type_text(PASSWORD)
        screen.press("Return")
        program.sign_in_panel.wait_until_gone()
        program.wait_for_menu(menu(WATCHING, NO_WORK))

    def test_explains_a_wrong_password_and_lets_the_user_correct_it(self):
        program = self.start()
        program.sign_in_panel.sign_in(password="wrong horse")
        program.sign_in_panel.wait_for_error(
            "Invalid email or password. If you sign in to VELK with Google, set a password first via "
            f"“Forgot password” at {self.service.origin}/login."
        )
        self.assertIsNone(stored_token())
        panel = program.sign_in_panel.panel
        self.assertEqual(panel.find("Email", "text").text, EMAIL)
        panel.find("Password", "text").write(PASSWORD)
        panel.find("Sign in", "push button").click()
        program.wait_for_menu(menu(WATCHING, NO_WORK))

    def test_sends_nothing_for_an_empty_form(self):
        program = self.start()
        program.sign_in_panel.sign_in(email="  ", password=PASSWORD)
        program.sign_in_panel.wait_for_error("Enter your email and password.")
        self.assertEqual(self.service.requests(local_service.LOGIN), [])

    def test_says_who_is_signed_in_and_how_many_are_watched_for(self):
        self.start_signed_in()
        self.wait_for_notification("VELK Notewick", f"Signed in as {EMAIL}.")
        self.wait_for_notification("VELK Notewick", "Watching for work on 12 participants.")

    def test_goes_on_as_signed_in_after_a_restart(self):
        self.assertEqual(self.start_signed_in().quit(), 0)
        desk.notifications.clear()
        program = self.start()
        program.wait_for_menu(menu(WATCHING, NO_WORK))
        program.widget.window
        self.assertFalse(program.sign_in_panel.shown)
        self.assertEqual(desk.notifications.everything(), [])


class WhatIsWritten(Story):
    def test_is_for_its_owner_alone(self):
        program = self.start_signed_in()
        program.widget.write_note("Called about rent")
        self.service.wait_for_notes("Called about rent")
        self.assertEqual(stat.S_IMODE(self.home.support.stat().st_mode), 0o700)
        written = [*self.home.support.iterdir(), self.home.settings]
        names = {path.name for path in written}
        self.assertLessEqual({"outbox.json", "participants.json", "Notewick.ini"}, names)
        self.assertTrue(any(name.startswith("captures-") for name in names))
        modes = {path.name: stat.S_IMODE(path.stat().st_mode) for path in written}
        self.assertEqual(modes, dict.fromkeys(names, 0o600))

    def test_keeps_the_token_in_the_secret_store_alone(self):
        program = self.start_signed_in()
        program.widget.write_note("Called about rent")
        self.service.wait_for_notes("Called about rent")
        token = stored_token()
        self.assertIsNotNone(token)
        bearer = self.service.requests(local_service.CAPTURE)[0]["headers"]["Authorization"].split()[1]
        self.assertEqual(self.home.setting("VELKUserEmail"), EMAIL)
        self.assertNotEqual(self.home.files_with("Tobias"), [], "the search finds what is there")
        for secret in (token, bearer, PASSWORD):
            self.assertEqual(self.home.files_with(secret), [])
            for view in ("environ", "cmdline"):
                with open(f"/proc/{program.pid}/{view}", "rb") as file:
                    self.assertNotIn(secret.encode(), file.read())
            self.assertNotIn(secret, program.output)


if __name__ == "__main__":
    unittest.main()
