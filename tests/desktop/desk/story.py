"""Tests of the whole product beside one local service."""

import tempfile
import unittest
from pathlib import Path

import desk
from desk import keyring, notewick, notifications, programs
from desk.fast_time import FastTime
from desk.local_service import LocalService


class Story(unittest.TestCase):
    """Each test is a user who has never run the program; the service is the same for the whole class."""

    fast = False  # whether time runs faster for the program and the service
    factor = 60  # how many times; more than 10 let samples come too late to count exactly
    participants = None  # the names of the account's participants; None are the demonstration's twelve
    secret_store = True  # whether the session has an open one

    @classmethod
    def setUpClass(cls):
        cls.folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.addClassCleanup(desk.close_all)
        cls.clock = cls.make_clock()
        cls.service = LocalService(cls.folder, cls.clock, cls.participants)

    @classmethod
    def make_clock(cls):
        """The environment that gives the program and the service another clock than the machine's."""
        return FastTime(factor=cls.factor).environment if cls.fast else {}

    def setUp(self):
        self.close_what_it_starts()
        self.meet_a_new_user()

    def close_what_it_starts(self):
        before = programs.running()
        self.addCleanup(lambda: desk.close_all(but={*before, self.service.program}))

    @classmethod
    def forget_the_last_test(cls):
        cls.service.forget()
        notifications.clear()

    @classmethod
    def meet_a_new_user(cls):
        cls.forget_the_last_test()
        if cls.secret_store:
            keyring.clear(**notewick.SECRET)
        cls.home = notewick.Home(tempfile.mkdtemp(dir=cls.folder))
        cls.home.point_at(cls.service.origin)

    @classmethod
    def start(cls, *arguments, **environment):
        trust = {"SSL_CERT_FILE": cls.service.authority}
        return notewick.Notewick(
            *arguments, environment={**cls.home.environment, **cls.clock, **trust, **environment}
        )

    @classmethod
    def start_signed_in(cls, **environment):
        program = cls.start(**environment)
        program.sign_in()
        if cls.secret_store and not cls.fast:  # a fast clock leaves a busy store no time
            desk.wait_until(notewick.stored_token, what="the stored sign-in")
        return program

    def wait_until_active(self, window):
        desk.wait_until(lambda: window.is_active, what=f"{window} having the keyboard")

    def wait_for_notification(self, summary, body):
        def found():
            return any((n.summary, n.body) == (summary, body) for n in notifications.everything())

        desk.wait_until(found, what=f"the notification {summary!r}: {body!r}")


class Chapters(Story):
    """Tests of one user whose program runs on, signed in, from the first test of the class to the last."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.meet_a_new_user()
        cls.program = cls.start_signed_in()

    def setUp(self):
        self.close_what_it_starts()
        self.forget_the_last_test()
        if not self.program.widget.shown:
            self.program.choose("Show floating widget")
