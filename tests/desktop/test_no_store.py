#!/usr/bin/python3
"""A desktop without a secret store, and one whose store hangs. Runs in a session with --keyring none."""

import unittest

import desk
from desk import keyring, local_service
from desk.local_service import PASSWORD
from desk.notewick import NO_WORK, SIGNED_OUT, WATCHING, menu
from desk.story import Story


class WithoutASecretStore(Story):
    secret_store = False

    def test_signing_in_holds_until_the_program_ends(self):
        program = self.start()
        program.wait_for_menu(menu(SIGNED_OUT, NO_WORK, signed_in=False))
        program.sign_in_panel.sign_in()
        program.widget.write_note("Called about rent")
        self.service.wait_for_notes("Called about rent")
        program.quit()
        again = self.start()
        self.assertTrue(again.sign_in_panel.window)

    def test_no_token_is_written_anywhere_else(self):
        program = self.start()
        program.sign_in_panel.sign_in()
        program.widget.write_note("Called about rent")
        self.service.wait_for_notes("Called about rent")
        request = self.service.requests(local_service.CAPTURE)[0]
        bearer = request["headers"]["Authorization"].split()[1]
        for secret in (bearer, PASSWORD):
            self.assertEqual(self.home.files_with(secret), [])
            self.assertNotIn(secret, program.output)
        self.assertEqual(self.home.words_like_tokens(), [])
        self.assertNotEqual(self.home.files_with("Called about rent"), [], "the search finds what is there")


class WithAStoreThatHangs(Story):
    secret_store = False

    def test_the_program_answers_and_goes_on_when_the_store_does(self):
        with keyring.FakeStore() as store:
            self.assertEqual(self.start_signed_in().quit(), 0)
            store.freeze()
            self.addCleanup(store.thaw)
            program = self.start()
            program.wait_for_menu(menu(WATCHING, NO_WORK))
            program.choose("Pause watching")
            program.wait_for_entry("Paused")
            self.assertFalse(program.sign_in_panel.shown)
            asked = len(self.service.requests(local_service.PARTICIPANTS))
            store.thaw()
            desk.wait_until(
                lambda: len(self.service.requests(local_service.PARTICIPANTS)) > asked, what="the participants"
            )
            program.widget.window
            self.assertFalse(program.sign_in_panel.shown)


if __name__ == "__main__":
    unittest.main()
