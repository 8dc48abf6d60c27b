#!/usr/bin/python3
"""A service that is busy, stopped, cut off or silent, and a session that has ended."""

import signal
import time
import unittest

import desk
from desk.local_service import CAPTURE, PARTICIPANTS, REFRESH
from desk.notewick import NO_WORK, SIGNED_OUT, WATCHING, menu, stored_token
from desk.story import Story

ONE_WAITS = ["1 note waiting to send to VELK"]
QUEUED = "1 queued — will retry"


class AnOutage(Story):
    def wait_for_error(self, text):
        """Waits until the only note in the outbox has failed like this."""
        desk.wait_until(lambda: text in self.home.list("outbox.json")[0]["lastError"], what=f"the error {text!r}")

    def test_keeps_the_note_while_the_service_is_busy(self):
        program = self.start_signed_in()
        self.service.fail(status=503)
        program.widget.write_note("Called about rent")
        program.widget.wait_for_status(QUEUED)
        program.wait_for_menu(menu(WATCHING, NO_WORK, ONE_WAITS))
        program.choose("Retry now")
        desk.wait_until(lambda: self.home.list("outbox.json")[0]["attempts"] == 2, what="two attempts")
        self.assertEqual(self.service.notes(), [])
        self.service.work_again()
        program.choose("Retry now")
        program.wait_for_menu(menu(WATCHING, NO_WORK))
        program.widget.wait_for_status("")
        self.assertEqual(self.service.inputs(), ["Called about rent"])

    def test_delivers_once_after_a_restart_in_the_middle(self):
        program = self.start_signed_in()
        self.service.stop()
        program.widget.write_note("Called about rent")
        program.wait_for_menu(menu(WATCHING, NO_WORK, ONE_WAITS))
        self.wait_for_error("onnect")
        self.assertEqual(program.quit(), 0)

        again = self.start()
        again.wait_for_menu(menu(WATCHING, NO_WORK, ONE_WAITS))
        self.assertFalse(again.sign_in_panel.shown)
        self.service.start()
        again.choose("Retry now")
        again.wait_for_menu(menu(WATCHING, NO_WORK))
        self.assertEqual(self.service.inputs(), ["Called about rent"])
        self.assertEqual(self.home.list("outbox.json"), [])

    def test_sends_again_what_may_have_got_lost(self):
        program = self.start_signed_in()
        self.service.fail(cut="before", times=1)
        self.service.fail(cut="after", times=1)
        program.widget.write_note("Called about rent")
        program.widget.wait_for_status(QUEUED)
        self.assertEqual(self.service.notes(), [], "one attempt, no silent second one")
        program.choose("Retry now")
        self.service.wait_for_notes("Called about rent")
        program.wait_for_menu(menu(WATCHING, NO_WORK, ONE_WAITS))
        program.choose("Retry now")
        program.wait_for_menu(menu(WATCHING, NO_WORK))
        self.assertEqual(self.service.inputs(), ["Called about rent"] * 2)
        self.assertEqual(len(self.service.requests(CAPTURE)), 3)

    def test_gives_up_a_note_that_is_refused_and_says_so(self):
        program = self.start_signed_in()
        self.service.fail(status=422, body={"error": "Participant is closed"})
        program.widget.write_note("Called about rent")
        self.wait_for_notification("VELK Notewick", "Note for Amara Osei failed: Participant is closed")
        program.wait_for_menu(menu(WATCHING, NO_WORK))
        self.assertEqual(self.home.list("outbox.json"), [])
        self.assertTrue(any("api-error: Note for Amara Osei failed" in line for line in self.home.watch_log()))

    def test_refuses_a_service_that_nobody_vouches_for(self):
        program = self.start(SSL_CERT_FILE="/dev/null")
        program.sign_in_panel.sign_in()
        errors = desk.wait_until(lambda: program.sign_in_panel.panel.all(role="notification"), what="an error")
        self.assertNotEqual(errors[0].name, "")
        self.assertEqual(self.service.requests("/api/desktop/auth/login"), [])
        self.assertTrue(program.sign_in_panel.shown)


class AnEndedSession(Story):
    def test_brings_the_sign_in_panel_and_keeps_the_note(self):
        self.assertEqual(self.start_signed_in().quit(), 0)
        self.service.fail(REFRESH, status=401)
        program = self.start()
        self.assertTrue(program.sign_in_panel.window)
        program.wait_for_menu(menu(SIGNED_OUT, NO_WORK, signed_in=False))
        self.assertIsNone(stored_token())
        program.choose("Log work now (call, visit…)")  # the participants are still known
        program.widget.write_note("Called about rent")
        program.wait_for_entry(ONE_WAITS[0])
        self.service.work_again()
        program.sign_in()
        self.service.wait_for_notes("Called about rent")
        program.wait_for_menu(menu(WATCHING, NO_WORK))


class WhatDoesNotAnswer(Story):
    """The menu and the widget do not wait for it; a wait would be many times as long as the limit here."""

    limit = 5.0  # seconds for one round

    def work_until(self, program, condition):
        """Uses the menu and the widget, each time within the limit, until the condition holds."""
        end, rounds = time.monotonic() + 90, 0
        while rounds < 5 or not condition():
            before = time.monotonic()
            program.choose("Pause watching")
            program.wait_for_entry("Paused")
            program.choose("Resume watching")
            program.wait_for_entry("Pause watching")
            program.widget.note.write(f"round {rounds}")
            self.assertLess(time.monotonic() - before, self.limit)
            rounds += 1
            self.assertLess(time.monotonic(), end)

    def test_a_silent_service(self):
        program = self.start_signed_in()
        self.service.signal(signal.SIGSTOP)
        self.addCleanup(self.service.signal, signal.SIGCONT)
        program.widget.write_note("Called about rent")
        program.choose("Reload participants")
        self.work_until(program, lambda: program.has(ONE_WAITS[0]))
        self.service.signal(signal.SIGCONT)
        self.service.wait_for_notes("Called about rent")

    def test_stopped_applications(self):
        program = self.start_signed_in()
        editor = desk.zenity("Chat with Tobias Hargreave")
        for stopped in (desk.xterm("Mail: Lena O'Keefe"), editor):
            stopped.window().focus()
            stopped.signal(signal.SIGSTOP)
            self.addCleanup(stopped.signal, signal.SIGCONT)
        self.work_until(program, self.home.watch_log)
        self.assertIn('matches=["Tobias Hargreave"]', self.home.text("watch.log"))


class ATimeOut(Story):
    fast = True

    def test_keeps_the_note_for_the_next_try(self):
        program = self.start_signed_in()
        self.service.signal(signal.SIGSTOP)
        self.addCleanup(self.service.signal, signal.SIGCONT)
        program.widget.write_note("Called about rent")
        desk.wait_until(lambda: self.home.list("outbox.json")[0]["attempts"] >= 1, what="the time-out")
        program.wait_for_entry(ONE_WAITS[0])
        self.service.signal(signal.SIGCONT)
        desk.wait_until(lambda: self.home.list("outbox.json") == [], what="the delivery by the timer")
        self.assertIn("Called about rent", self.service.inputs())


if __name__ == "__main__":
    unittest.main()
