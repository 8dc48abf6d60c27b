#!/usr/bin/python3
"""The secret store that is still locked when the program starts, as right after login."""

import unittest

import desk
from desk import keyring
from desk.local_service import PARTICIPANTS, REFRESH
from desk.notewick import NO_WORK, SIGNED_OUT, WATCHING, menu, stored_token
from desk.story import Story


class TheLockedStore(Story):
    """The token is in gnome-keyring, the keyring is locked, the program starts."""

    def setUp(self):
        keyring.unlock()
        super().setUp()
        self.addCleanup(keyring.unlock)
        self.assertEqual(self.start_signed_in().quit(), 0)
        self.refreshes = len(self.service.requests(REFRESH))
        self.fetches = len(self.service.requests(PARTICIPANTS))
        keyring.lock()

    def start_at_the_prompt(self):
        program = self.start()
        desk.wait_until(keyring.prompt, what="the prompt of the keyring")
        return program

    def test_asks_to_unlock_once_and_runs_on(self):
        program = self.start_at_the_prompt()
        program.wait_for_menu(menu(WATCHING, NO_WORK))
        program.choose("Pause watching")
        program.wait_for_entry("Paused")
        program.choose("Log work now (call, visit…)")
        program.widget.note.write("Called about rent")
        self.assertFalse(program.sign_in_panel.shown)
        self.assertEqual(len(self.prompts()), 1)
        self.assertEqual(len(self.service.requests(REFRESH)), self.refreshes)

    @staticmethod
    def prompts():
        return [window for window in desk.windows.everything() if window.class_name == "Gcr-prompter"]

    def test_goes_on_as_signed_in_when_it_opens(self):
        program = self.start_at_the_prompt()
        program.choose("Log work now (call, visit…)")
        program.widget.write_note("Called about rent")
        program.wait_for_entry("1 note waiting to send to VELK")
        keyring.answer_prompt()
        self.service.wait_for_notes("Called about rent")
        program.wait_for_menu(menu(WATCHING, NO_WORK))
        self.assertFalse(program.sign_in_panel.shown)
        self.assertEqual(self.prompts(), [])
        self.assertIsNotNone(stored_token())

    def start_with_a_note(self):
        program = self.start_at_the_prompt()
        program.choose("Log work now (call, visit…)")
        program.widget.write_note("Called about rent")
        program.wait_for_entry("1 note waiting to send to VELK")
        return program

    def wait_until_it_goes_on_as_signed_in(self, program):
        self.service.wait_for_notes("Called about rent")
        program.wait_for_menu(menu(WATCHING, NO_WORK))
        self.assertGreater(len(self.service.requests(REFRESH)), self.refreshes)
        self.assertGreater(len(self.service.requests(PARTICIPANTS)), self.fetches)
        self.assertFalse(program.sign_in_panel.shown)

    def test_goes_on_when_another_program_opens_it(self):
        program = self.start_with_a_note()
        keyring.unlock()
        self.wait_until_it_goes_on_as_signed_in(program)
        keyring.dismiss_prompt()
        program.choose("Pause watching")
        program.wait_for_entry("Paused")
        self.assertTrue(program.has("Sign out of VELK"))
        self.assertFalse(program.sign_in_panel.shown)

    def test_goes_on_when_another_program_opens_it_after_the_dismissal(self):
        program = self.start_with_a_note()
        keyring.dismiss_prompt()
        program.sign_in_panel.window.close()
        keyring.unlock()
        self.wait_until_it_goes_on_as_signed_in(program)
        self.assertEqual(self.prompts(), [])

    def test_leads_to_the_sign_in_panel_when_it_stays_shut(self):
        program = self.start_at_the_prompt()
        keyring.dismiss_prompt()
        self.assertTrue(program.sign_in_panel.window)
        program.wait_for_menu(menu(SIGNED_OUT, NO_WORK, signed_in=False))
        self.assertTrue(keyring.is_locked())
        self.assertEqual(self.prompts(), [])


if __name__ == "__main__":
    unittest.main()
