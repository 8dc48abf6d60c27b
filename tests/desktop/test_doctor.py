#!/usr/bin/python3
"""notewick-doctor beside the program: what it tells, what it keeps to itself, and that it always ends."""

import re
import signal
import unittest

import desk
from desk import keyring, local_service
from desk.local_service import EMAIL, PASSWORD
from desk.notewick import DOCTOR, stored_token
from desk.story import Story
from desk.x_server import XServer

NOTE = "Called about rent"
TITLE = "Housing file 4711"
DAY = r"\d{4}-\d\d-\d\d"


class Doctor(Story):
    def ask(self, **environment):
        """Runs it to its end; the lines by the names of the checks, and the exit status."""
        trust = {"SSL_CERT_FILE": self.service.authority}
        program = desk.start(DOCTOR, environment={**self.home.environment, **trust, **environment})
        status = program.wait()
        self.lines = {}
        for line in program.output.splitlines():
            verdict, check, text = re.fullmatch(r"(ok|todo)  +([a-z ]+): (.*)", line).groups()
            self.lines[check] = (verdict, text)
        return program.output, status

    def everything(self):
        return sorted((path, path.stat().st_mode) for path in self.home.folder.rglob("*"))

    def assert_told(self, check, verdict, text):
        self.assertEqual(self.lines[check][0], verdict, self.lines[check])
        self.assertRegex(self.lines[check][1], rf"^{text}$")

    def test_tells_what_a_supporter_asks_for_and_names_nobody(self):
        program = self.start_signed_in()
        self.service.fail(local_service.CAPTURE, status=503, times=99)
        program.widget.write_note(NOTE)
        desk.wait_until(lambda: self.home.list("outbox.json")[0]["attempts"], what="the failed try")
        desk.xterm(TITLE).window().focus()
        output, status = self.ask()
        self.assertEqual(status, 1, "a note waits")
        self.assert_told("versions", "ok", r"Notewick \d.*, Qt 6.*, libcurl 7.*, distribution .+")
        self.assert_told("session", "ok", "type x11, desktop unknown")
        self.assert_told("titles", "ok", "1 seen by X11 properties")
        self.assert_told("tray", "ok", "takes status notifier items")
        self.assert_told("password store", "ok", "open, holds a sign-in")
        self.assert_told("address", "ok", self.service.origin)
        self.assert_told("proxy", "ok", "none")
        self.assert_told("service", "ok", f"answers with 401, its certificate ends on {DAY}")
        self.assert_told("participants", "ok", "12")
        self.assert_told("caught work", "ok", "none")
        self.assert_told("notes", "todo", r"1 waiting\. Choose “Retry now” in Notewick's menu\.")
        self.assert_told("files", "ok", r"folder 0700, Notewick\.ini \d+ bytes 0600, outbox\.json .*")
        self.assert_told("start at login", "ok", "off")
        names = [name for each in self.home.list("participants.json") for name in list(each.values())[1:]]
        self.assertEqual(len(names), 24)
        for private in (*names, NOTE, TITLE, EMAIL, EMAIL.split("@")[0], PASSWORD, stored_token()):
            self.assertNotIn(private.lower(), output.lower())

    def test_changes_nothing_for_a_user_who_has_never_run_the_program(self):
        self.home.settings.chmod(0o644)
        before = self.everything()
        self.ask()
        self.assertEqual(self.everything(), before)
        self.assertEqual(self.service.requests(local_service.LOGIN), [])
        self.assertFalse(keyring.prompts())
        self.assert_told("password store", "todo", "open, holds no sign-in.*")
        self.assert_told("files", "ok", "none yet")
        self.assert_told("participants", "todo", "none.*")

    def test_ends_when_everything_that_it_asks_hangs(self):
        display = XServer()
        self.addCleanup(display.close)
        for stop, go_on in (
            (display.signal, display.signal),
            (self.service.signal, self.service.signal),
            (keyring.send_signal, keyring.send_signal),
        ):
            stop(signal.SIGSTOP)
            self.addCleanup(go_on, signal.SIGCONT)
        self.ask(DISPLAY=display.display)
        for check in ("titles", "tray"):
            self.assert_told(check, "todo", "did not answer in time.*")
        self.assert_told("password store", "todo", "does not answer.*")
        self.assert_told(
            "service", "todo", r"(was not reached\. The request timed out\.|did not answer in time).*"
        )
        self.assert_told("files", "ok", "none yet")


if __name__ == "__main__":
    unittest.main()
