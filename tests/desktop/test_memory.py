#!/usr/bin/python3
"""What is left of the user's secrets in the program's memory."""

import resource
import unittest

import desk
from desk import memory
from desk.local_service import PASSWORD
from desk.notewick import stored_token
from desk.story import Story

AFTER_A_SIGN_OUT = 3  # seconds


class TheMemory(Story):
    def places(self, program, *texts):
        """Where their ends are: memory that was given back begins with notes of the allocator."""
        return [place for text in texts for place in memory.places_of(program.pid, text[-20:])]

    def wait_for_the_end_of(self, program, *texts, timeout):
        try:
            desk.wait_until(lambda: self.places(program, *texts) == [], timeout)
        except desk.TimedOut:
            self.assertEqual(self.places(program, *texts), [])

    def test_holds_no_token_that_has_been_replaced_and_none_3_seconds_after_a_sign_out(self):
        program = self.start_signed_in()
        program.widget.write_note("first")
        self.service.wait_for_notes("first")
        desk.wait_until(lambda: self.home.list("outbox.json") == [], what="the service's answer")
        replaced = [stored_token(), self.service.bearer()]
        program.quit()
        program = self.start()
        program.widget.window
        desk.wait_until(lambda: stored_token() != replaced[0], what="the refreshed token")
        program.widget.write_note("second")
        self.service.wait_for_notes("first", "second")
        self.wait_for_the_end_of(program, *replaced, timeout=AFTER_A_SIGN_OUT)
        tokens = [*replaced, stored_token(), self.service.bearer()]
        self.assertNotEqual(self.places(program, tokens[-1]), [], "the search finds a token that is there")
        program.choose("Sign out of VELK")
        program.wait_for_entry("Sign in to VELK…")
        self.wait_for_the_end_of(program, *tokens, timeout=AFTER_A_SIGN_OUT)

    def test_leaves_no_core(self):
        program = self.start()
        program.sign_in_panel.window
        self.assertEqual(resource.prlimit(program.pid, resource.RLIMIT_CORE)[0], 1)

    def test_holds_no_password_once_the_user_is_signed_in(self):
        program = self.start_signed_in()
        self.wait_for_the_end_of(program, PASSWORD, timeout=AFTER_A_SIGN_OUT)


if __name__ == "__main__":
    unittest.main()
