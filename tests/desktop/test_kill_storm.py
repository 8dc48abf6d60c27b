#!/usr/bin/python3
"""A storm of kills: no note that the user saw leave the form is lost, and no list becomes unreadable.

A note counts as confirmed as soon as the program has emptied the form for it, which comes before the words
"Sent — finish it on VELK"; and so does every note in the captures log. Each kill is a SIGKILL at a random
instant: while the program starts, while notes are written, or just as one is on its way into the files.
Whenever the program starts, 40 notes wait, most of which the service turns away: their list takes
some 30 kB. A note arrives twice only where a kill came between the service's storing it and the program's saving
that; nothing else here makes it be sent again.

Runs in a session with --notify none: thousands of notifications on its screen would keep a processor to themselves.
NOTEWICK_STORM_SEED repeats a storm's choices; the instants are the machine's. NOTEWICK_STORM_KILLS makes it longer.
"""

import collections
import itertools
import json
import os
import random
import threading
import time
import unittest

import dbus
import desk
from desk import controls
from desk.local_service import CAPTURE
from desk.notewick import QUICK_NOTE
from desk.story import Story

KILLS = int(os.environ.get("NOTEWICK_STORM_KILLS") or 9)
LISTS = ("pending.json", "outbox.json", "participants.json")
CAUGHT_AT_THE_START = 40
WAITING_AT_EACH_START = 40
REASON = "The service is being looked after. " * 20  # makes the list long
PATIENCE = 120  # seconds; storms rage side by side
MOMENTS = {  # the kill comes so many seconds after the program ...
    "was started": (0, 0.5),
    "showed its form": (0, 1.5),
    "was told to send": (0.08, 0.18),  # an accessible button stays down for 0.1: the files are being written
}
FAULTS = [
    {"status": 503, "body": {"error": REASON}, "rate": 0.7},
    {"cut": "before", "rate": 0.3},
    {"delay": 0.15, "rate": 0.5},
]


class Died(Exception):
    """The program is no more."""


class Form:
    """The widget's controls, looked up once in the life of a program; every wait ends with that life."""

    def __init__(self, program):
        self._program = program
        self._until(self._look_up)

    def _until(self, condition):
        desk.wait_until(lambda: not self._program.is_running or condition(), PATIENCE, "the form's answer")
        if not self._program.is_running:
            raise Died

    def _look_up(self):
        windows = controls.at_once(self._program).children
        [self._panel] = [window for window in windows if window.is_called(QUICK_NOTE, "dialog")]
        inside = list(self._panel.below())
        [self._note] = [each for each in inside if each.is_called("What did you do?", "text")]
        [self._minutes] = [each for each in inside if each.is_called("30", "radio button")]
        [self._send] = [each for each in inside if each.is_called("Send to VELK", "push button")]
        return True

    def point_at_caught_work(self):
        rows = [button for button in self._panel.all(role="push button") if button.name.startswith("Log ")]
        if rows:
            rows[0].press()

    def fill(self, text):
        self._note.write(text)
        if not self._minutes.checked:
            self._minutes.press()
        self._until(lambda: self._minutes.checked)

    def send(self):
        self._send.press()

    def wait_until_empty(self):
        self._until(lambda: self._note.text == "")


class AStormOfKills(Story):
    @classmethod
    def forget_the_last_test(cls):
        cls.service.forget()

    def setUp(self):
        super().setUp()
        seed = int(os.environ.get("NOTEWICK_STORM_SEED") or random.SystemRandom().randrange(1 << 32))
        print(f"NOTEWICK_STORM_SEED={seed}", flush=True)
        self.random = random.Random(seed)
        self.confirmed = []
        self.written = 0
        self.queued = 0
        self.kills = 0
        self.kills_with_notes_waiting = 0
        self.kills_survived = collections.Counter()  # by the notes that were in the list then

    def catch_work(self):
        self.home.support.mkdir(parents=True, mode=0o700)
        work = [
            self.home.caught_work(
                number,
                "Lena O'Keefe",
                day=f"2026-{number // 28 + 1:02}-{number % 28 + 1:02}",
                evidence=["Mail: Lena O'Keefe — the form for the housing office", "Lena O'Keefe.odt"],
            )
            for number in range(CAUGHT_AT_THE_START)
        ]
        self.home.leave_caught(work)

    def let_notes_wait(self):
        path = self.home.support / "outbox.json"
        waiting = json.loads(path.read_text())
        while len(waiting) < WAITING_AT_EACH_START:
            self.queued += 1
            note = {"input": f"waiting {self.queued}", "attempts": 1, "lastError": REASON}
            waiting.append(self.home.waiting_note(self.queued, **note))
            self.confirmed.append(waiting[-1]["input"])
        path.write_text(json.dumps(waiting, indent=2))

    def send_a_note(self, form, reached=lambda moment: None):
        self.written += 1
        text = f"note {self.written}"
        if self.random.random() < 0.3:
            form.point_at_caught_work()
        form.fill(text)
        form.send()
        reached("was told to send")
        form.wait_until_empty()
        self.confirmed.append(text)

    def write_until_killed(self, program, reached):
        """Writes one note after the other; the end of the program is the end of this."""
        try:
            form = Form(program)
            reached("showed its form")
            while True:
                self.send_a_note(form, reached)
        except Died:
            return
        except dbus.DBusException:
            program.wait()  # an end tears the connection before it is known

    def live_and_die(self, chosen):
        """One start of the program, which is killed at a random instant after this moment."""
        self.let_notes_wait()
        program = self.start()
        earliest, latest = MOMENTS[chosen]
        instant = self.random.uniform(earliest, latest)
        begin = threading.Event()

        def reached(moment):
            if moment == chosen:
                begin.set()

        def kill():
            begin.wait(60)
            time.sleep(instant)
            program.kill()

        killer = threading.Thread(target=kill, daemon=True)
        killer.start()
        reached("was started")
        self.write_until_killed(program, reached)
        killer.join()

    def logged(self):
        """The notes in the captures logs."""
        logs = self.home.support.glob("captures-*.log")
        lines = (line for log in logs for line in log.read_text("utf-8").splitlines())
        return [line.rpartition(" · ")[2] for line in lines]

    def outbox(self):
        return [item["input"] for item in self.home.list("outbox.json")]

    def promised(self):
        return {*self.confirmed, *self.logged()}

    def check_lists(self):
        """After each kill."""
        self.kills += 1
        for name in LISTS:
            with self.subTest(kill=self.kills, list=name):
                self.assertIsInstance(self.home.list(name), list)
        waiting = self.outbox()
        self.kills_with_notes_waiting += bool(waiting)
        self.kills_survived.update(waiting)
        self.assertEqual(
            self.promised() - {*waiting, *self.service.inputs()}, set(), f"lost by kill {self.kills}"
        )

    def test_loses_no_note_and_no_list(self):
        self.catch_work()
        program = self.start_signed_in()
        self.send_a_note(Form(program))
        program.kill()
        self.check_lists()
        for fault in FAULTS:
            self.service.fail(CAPTURE, **fault)
        for moment in itertools.islice(itertools.cycle(MOMENTS), KILLS - 1):
            self.live_and_die(moment)
            self.check_lists()
        self.service.work_again()
        self.start()
        desk.wait_until(lambda: self.outbox() == [], what="an empty outbox")
        delivered = self.service.inputs()
        times = collections.Counter(delivered)
        for what, number in {
            "kills": self.kills,
            "kills with notes waiting": self.kills_with_notes_waiting,
            "notes written": self.written,
            "notes confirmed": len(self.confirmed),
            "notes logged": len(set(self.logged())),
            "notes delivered": len(times),
            "arrivals beyond the first": len(delivered) - len(times),
            "pieces of caught work confirmed": CAUGHT_AT_THE_START - len(self.home.list("pending.json")),
        }.items():
            print(f"{what}: {number}")
        self.assertEqual(self.promised() - set(delivered), set())
        self.assertEqual([note for note in times if times[note] > 1 + self.kills_survived[note]], [])
        self.assertGreaterEqual(len(self.confirmed), KILLS // 9, "too calm for a storm")
        self.assertGreaterEqual(self.kills_with_notes_waiting, KILLS // 9, "too calm for a storm")


if __name__ == "__main__":
    unittest.main()
