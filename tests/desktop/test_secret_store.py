#!/usr/bin/python3
"""A secret store that is locked when the program starts, as right after login, or that does not answer."""

import signal
import unittest

import desk
from desk import keyring
from desk.local_service import PARTICIPANTS, REFRESH
from desk.notewick import NO_WORK, SIGNED_OUT, WATCHING, menu, stored_token
from desk.story import Story

NOTE = "Called about rent"


class TheSecretStore(Story):
    """The user is signed in; the token is in gnome-keyring."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        keyring.unlock()
        cls.meet_a_new_user()
        cls.start_signed_in().quit()

    @classmethod
    def meet_a_new_user(cls):
        """Once for the class; afterwards it is the same user again."""
        if "home" in vars(cls):
            cls.forget_the_last_test()
        else:
            super().meet_a_new_user()

    def start_at_the_prompt(self):
        keyring.lock()
        self.addCleanup(keyring.unlock)
        program = self.start()
        desk.wait_until(keyring.prompts, what="the prompt of the keyring")
        return program

    @staticmethod
    def write_note(program):
        program.choose("Log work now (call, visit…)")
        program.widget.write_note(NOTE)
        program.wait_for_entry("1 note waiting to send to VELK")

    def check_that_it_goes_on_as_signed_in(self, program):
        self.service.wait_for_notes(NOTE)
        program.wait_for_menu(menu(WATCHING, NO_WORK))
        self.assertNotEqual(self.service.requests(REFRESH), [])
        desk.wait_until(lambda: self.service.requests(PARTICIPANTS), what="the participants")
        self.assertFalse(program.sign_in_panel.shown)

    def test_is_asked_for_once_and_the_program_runs_on(self):
        program = self.start_at_the_prompt()
        program.wait_for_menu(menu(WATCHING, NO_WORK))
        self.write_note(program)
        self.assertFalse(program.sign_in_panel.shown)
        self.assertEqual(len(keyring.prompts()), 1)
        self.assertEqual(self.service.requests(REFRESH), [])
        keyring.answer_prompt()
        self.check_that_it_goes_on_as_signed_in(program)
        self.assertEqual(keyring.prompts(), [])
        self.assertIsNotNone(stored_token())

    def test_serves_at_once_when_another_program_opens_it(self):
        program = self.start_at_the_prompt()
        self.write_note(program)
        keyring.unlock()
        self.check_that_it_goes_on_as_signed_in(program)
        keyring.dismiss_prompt()
        program.choose("Pause watching")
        program.wait_for_entry("Paused")
        self.assertTrue(program.has("Sign out of VELK"))
        self.assertFalse(program.sign_in_panel.shown)

    def test_leads_to_the_sign_in_panel_until_another_program_opens_it(self):
        program = self.start_at_the_prompt()
        keyring.dismiss_prompt()
        program.wait_for_menu(menu(SIGNED_OUT, NO_WORK, signed_in=False))
        program.sign_in_panel.window.close()
        self.assertTrue(keyring.is_locked())
        self.write_note(program)
        program.sign_in_panel.window.close()
        keyring.unlock()
        self.check_that_it_goes_on_as_signed_in(program)
        self.assertEqual(keyring.prompts(), [])

    def test_leaves_the_program_usable_while_it_hangs_and_serves_when_it_answers(self):
        keyring.send_signal(signal.SIGSTOP)
        self.addCleanup(keyring.send_signal, signal.SIGCONT)
        program = self.start()
        program.wait_for_menu(menu(WATCHING, NO_WORK))
        self.write_note(program)
        self.assertFalse(program.sign_in_panel.shown)
        keyring.send_signal(signal.SIGCONT)
        self.check_that_it_goes_on_as_signed_in(program)


if __name__ == "__main__":
    unittest.main()
