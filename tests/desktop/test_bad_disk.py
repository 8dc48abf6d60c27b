#!/usr/bin/python3
"""Lists that cannot be saved: the program runs on, sends what waits, and the next change saves the list whole."""

import errno
import os
import shutil
import tempfile
import unittest
from pathlib import Path

import desk
from desk.local_service import CAPTURE
from desk.story import Story

FAULTY_DISK = os.environ.get("FAULTY_DISK_LIBRARY", "")
FAULTS = {
    "a full disk": f"write {errno.ENOSPC}",
    "a disk that is read-only": f"open {errno.EROFS}",
    "a file that belongs to another user": f"open {errno.EACCES}",
    "a disk that breaks when it is flushed": f"flush {errno.EIO}",
}


class ABadDisk(Story):
    def setUp(self):
        super().setUp()
        self.disk = Path(tempfile.mkdtemp(dir=self.folder))
        self.program = self.start_signed_in(LD_PRELOAD=FAULTY_DISK, FAULTY_DISK=str(self.disk))

    def fail(self, fault):
        (self.disk / "fault").write_text(fault)

    def mend(self):
        self.assertIn("refused", self.calls())
        (self.disk / "calls").unlink()
        self.fail("")

    def calls(self):
        return (self.disk / "calls").read_text().split()

    def outbox(self):
        return [item["input"] for item in self.home.list("outbox.json")]

    def write_a_note_that_waits(self, text):
        self.service.fail(CAPTURE, status=503)
        self.program.widget.write_note(text)
        self.program.wait_for_entry("1 note waiting to send to VELK")

    def send_what_waits(self):
        self.service.work_again()
        self.program.send_what_waits()

    def check_that_the_fault_costs_no_note(self, text, mend):
        self.write_a_note_that_waits(f"{text}, first")
        self.send_what_waits()
        mend()
        self.write_a_note_that_waits(f"{text}, second")
        self.assertEqual(self.outbox(), [f"{text}, second"])
        self.send_what_waits()
        desk.wait_until(lambda: self.home.text("outbox.json") == "[]", what="the list without the notes")

    def test_loses_nothing_while_the_program_runs(self):
        for name, fault in FAULTS.items():
            with self.subTest(name):
                self.fail(fault)
                self.check_that_the_fault_costs_no_note(name, mend=self.mend)
        written = [f"{name}, {which}" for name in FAULTS for which in ("first", "second")]
        self.service.wait_for_notes(*written)

    def test_a_folder_in_the_place_of_the_list_costs_no_note(self):
        path = self.home.support / "outbox.json"
        path.mkdir()
        self.check_that_the_fault_costs_no_note("a folder", mend=path.rmdir)

    def test_keeps_the_next_note_where_its_folder_is_removed(self):
        shutil.rmtree(self.home.support)
        self.write_a_note_that_waits("kept")
        self.assertEqual(self.outbox(), ["kept"])
        self.assertEqual(self.home.support.stat().st_mode & 0o777, 0o700)
        desk.wait_until(lambda: self.home.list("outbox.json")[0]["attempts"], what="the end of the request")
        self.program.kill()
        self.service.work_again()
        self.start()
        self.service.wait_for_notes("kept")

    def test_has_the_note_before_the_request_starts(self):
        (self.disk / "calls").unlink()
        self.program.widget.write_note("flushed first")
        self.service.wait_for_notes("flushed first")
        calls = self.calls()
        self.assertEqual(calls[calls.index("flush") :][:3], ["flush", "cut", "connect"], calls)
        self.assertNotIn("connect", calls[: calls.index("flush")])


if __name__ == "__main__":
    unittest.main()
