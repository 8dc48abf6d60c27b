#!/usr/bin/python3
"""The program started with a local service beside it, as ./run does where no service is configured."""

import os
import re
import shutil
import signal
import subprocess
import tempfile
import unittest
from pathlib import Path

import desk
from desk import local_service, notewick, wait_until

SCRIPT = Path(__file__).resolve().parents[2] / "tools" / "run-with-local-service"


def children(pid):
    return [int(child) for child in Path(f"/proc/{pid}/task/{pid}/children").read_text().split()]


class Running(desk.Program):
    """The script, and the program that it has started."""

    def __init__(self, build):
        super().__init__([SCRIPT, build], {})
        self.wait_for_output("The case notes are at")
        self.password = re.search(r"password +(\S+)", self.output)[1]
        self.origin = re.search(r"(https://localhost:\d+)/case-notes", self.output)[1]

    def product(self):
        return wait_until(lambda: next((c for c in children(self.pid) if self.name_of(c) == "notewick"), None))

    def service(self):
        return next(c for c in children(self.pid) if self.name_of(c) == "local-service")

    @staticmethod
    def name_of(pid):
        return Path(f"/proc/{pid}/comm").read_text().strip()


class Product(desk.Program):
    """What notewick.Notewick offers, for a process that somebody else has started."""

    def __init__(self, pid):
        self.arguments, self.pid = ["notewick"], pid
        self.widget = notewick.Widget(self)
        self.sign_in_panel = notewick.SignInPanel(self)

    def has(self, label):
        return label in desk.tray.item(self).labels()

    def wait_for_entry(self, label):
        wait_until(lambda: self.has(label), what=label)


class RunWithLocalService(unittest.TestCase):
    def setUp(self):
        self.addCleanup(desk.close_all)
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.build = Path(folder.name, "build", "release")
        self.run_folder = Path(folder.name, "build", "run")
        beside = self.build / "tools" / "local-service"
        beside.mkdir(parents=True)
        shutil.copy(os.environ["NOTEWICK"], self.build)
        shutil.copy(os.environ["LOCAL_SERVICE"], beside)

    def sign_in(self, running):
        product = Product(running.product())
        product.sign_in_panel.sign_in(password=running.password)
        product.wait_for_entry("Watching · 12 participants")
        return product

    def notes(self):
        database = self.run_folder / "service" / "notes.db"
        question = ["sqlite3", "-readonly", database, "SELECT input FROM notes"]
        return subprocess.run(question, capture_output=True, text=True, check=True).stdout.splitlines()

    def test_signs_in_with_the_password_it_prints_and_sends_a_note(self):
        running = Running(self.build)
        product = self.sign_in(running)
        product.widget.write_note("Called about rent")
        wait_until(lambda: self.notes() == ["Called about rent"], what="the note in the database")
        self.assertTrue((self.run_folder / "home" / "Library").is_dir())
        self.assertFalse(Path(os.environ["HOME"], "Library").exists())

    def test_ends_both_when_it_is_ended(self):
        running = Running(self.build)
        started = [running.product(), running.service()]
        running.signal(signal.SIGTERM)
        self.assertEqual(running.wait(), 128 + signal.SIGTERM)
        self.assertEqual([pid for pid in started if Path("/proc", str(pid)).exists()], [])

    def test_ends_the_service_with_the_program(self):
        running = Running(self.build)
        service = running.service()
        desk.tray.item(Product(running.product())).choose("Quit VELK Notewick")
        self.assertEqual(running.wait(), 0)
        self.assertFalse(Path("/proc", str(service)).exists())

    def test_keeps_account_and_settings_for_the_next_time(self):
        first = Running(self.build)
        self.sign_in(first)
        desk.tray.item(Product(first.product())).choose("Quit VELK Notewick")
        first.wait()
        second = Running(self.build)
        self.assertEqual(second.password, first.password)
        Product(second.product()).wait_for_entry(f"Signed in as {local_service.EMAIL}")
        settings = (self.run_folder / "home" / ".config" / "VELK" / "Notewick.ini").read_text()
        self.assertIn(f"VELKUserEmail={local_service.EMAIL}", settings)
        self.assertEqual(re.findall("^VELKBaseURL=(.*)$", settings, re.MULTILINE), [second.origin])

    def test_started_again_leaves_the_running_service_alone(self):
        running = Running(self.build)
        product = self.sign_in(running)
        again = desk.start(SCRIPT, self.build)
        self.assertEqual(again.wait(), 0)
        product.widget.write_note("Called again")
        wait_until(lambda: self.notes() == ["Called again"], what="the note in the database")


if __name__ == "__main__":
    unittest.main()
