"""A test of the whole product: one user, one home folder, one service."""

import tempfile
import unittest
from pathlib import Path

import desk
from desk import keyring, notifications, notewick
from desk.fast_time import FastTime
from desk.local_service import LocalService


class Story(unittest.TestCase):
    """Gives each test its own home folder and service; the secret store and the desktop are the session's."""

    fast = False  # whether time runs faster for the program and the service
    factor = 60  # how many times; more than 10 let samples come too late to count exactly
    participants = None  # the names of the account's participants; None are the demonstration's twelve
    secret_store = True  # whether the session has an open one

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(desk.close_all)
        notifications.clear()
        if self.secret_store:
            keyring.clear(**notewick.SECRET)
        self.clock = FastTime(factor=self.factor).environment if self.fast else {}
        self.home = notewick.Home(Path(folder.name, "home"))
        served = Path(folder.name, "service")
        served.mkdir()
        self.service = LocalService(served, self.clock, self.participants)
        self.home.point_at(self.service.origin)

    @property
    def environment(self):
        return {**self.home.environment, **self.clock, "SSL_CERT_FILE": self.service.authority}

    def start(self, *arguments, **environment):
        return notewick.Notewick(*arguments, environment={**self.environment, **environment})

    def start_signed_in(self):
        program = self.start()
        program.sign_in(len(self.participants) if self.participants else 12)
        program.widget.window  # it comes with the participants
        return program

    def wait_for_notification(self, summary, body):
        def found():
            return any((n.summary, n.body) == (summary, body) for n in notifications.everything())

        desk.wait_until(found, what=f"the notification {summary!r}: {body!r}")

    def notification_count(self, summary):
        return sum(n.summary == summary for n in notifications.everything())
