#!/usr/bin/python3
"""Pipes, devices and links that lead to themselves, in the place of every file that the program reads or writes."""

import datetime
import os
import unittest

from desk.story import Story

NOTE = "Called about rent"


def put_pipe(path):
    os.mkfifo(path)


def put_device(path):
    path.symlink_to("/dev/zero")


def put_loop(path):
    path.symlink_to(path.name)


class InPlaceOfFiles(Story):
    def places(self, of_all):
        """Every file that the program reads or writes, but the second of those that an administrator makes."""
        days = (datetime.date.today() + datetime.timedelta(days) for days in (-1, 0, 1))
        logs = ["watch.log", *(f"captures-{day}.log" for day in days)]
        yield from (
            self.home.support / name for name in ("pending.json", "outbox.json", "participants.json", *logs)
        )
        yield from (self.home.settings, self.home.settings.with_name("Notewick.ini.lock"), of_all)
        yield self.home.configuration / "autostart" / "tools.velk.notewick.desktop"

    def live_with(self, put):
        of_all = [self.home.folder / name / "VELK" / "Notewick.ini" for name in ("first", "second")]
        self.home.settings.unlink()
        for path in self.places(of_all[0]):
            path.parent.mkdir(parents=True, exist_ok=True)
            put(path)
        of_all[1].parent.mkdir(parents=True)
        of_all[1].write_text(f"[General]\nVELKBaseURL={self.service.origin}\n")
        program = self.start_signed_in(XDG_CONFIG_DIRS=":".join(str(path.parent.parent) for path in of_all))
        program.widget.write_note(NOTE)
        self.service.wait_for_notes(NOTE)
        program.choose("Start at login")
        program.choose("Hide floating widget")
        program.widget.wait_until_gone()
        self.assertEqual(program.quit(), 0)

    def test_pipes_are_never_waited_for(self):
        self.live_with(put_pipe)

    def test_devices_are_never_read(self):
        self.live_with(put_device)

    def test_links_to_themselves_are_no_files(self):
        self.live_with(put_loop)


if __name__ == "__main__":
    unittest.main()
