#!/usr/bin/python3
"""Parts of the desktop that fail again and again. Runs in a session with --tray none --notify none."""

import signal
import unittest

import dbus
import desk
from desk import tray
from desk.story import Story

HOSTS = 25
NOTES = 100


class AHostileDesktop(Story):
    @classmethod
    def forget_the_last_test(cls):
        cls.service.forget()

    def test_a_tray_host_that_is_killed_has_the_item_back_each_time(self):
        program = self.start_signed_in()
        for _ in range(HOSTS):
            host = tray.start_host()
            self.wait_for_item(program)
            host.signal(signal.SIGKILL)
            desk.wait_until(lambda: not tray.has_host(), what="the end of the tray")
        tray.start_host()
        self.wait_for_item(program)
        self.assertEqual(program.quit(), 0)

    @staticmethod
    def wait_for_item(program):
        desk.wait_until(
            lambda: any(i.pid == program.pid for i in tray.everything()), what="the item in the tray"
        )

    def test_a_notification_service_that_hangs_delays_no_note(self):
        notifications = desk.start("dunst")
        bus = dbus.SessionBus()
        desk.wait_until(lambda: bus.name_has_owner("org.freedesktop.Notifications"), what="notifications")
        self.start_signed_in().kill()
        notifications.signal(signal.SIGSTOP)
        self.addCleanup(notifications.signal, signal.SIGCONT)
        notes = [self.home.waiting_note(number) for number in range(NOTES)]
        inputs = [note["input"] for note in notes]
        self.home.leave_in_outbox(notes)
        program = self.start()
        desk.wait_until(lambda: sorted(self.service.inputs()) == sorted(inputs), what="all notes")
        program.widget.write_note("One more")
        desk.wait_until(lambda: "One more" in self.service.inputs(), what="one more note")
        desk.wait_until(lambda: self.home.list("outbox.json") == [], what="an empty outbox")
        program.signal(signal.SIGTERM)
        self.assertEqual(program.wait(), 0)


if __name__ == "__main__":
    unittest.main()
