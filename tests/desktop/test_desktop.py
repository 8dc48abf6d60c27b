#!/usr/bin/python3
"""The program among the other parts of a desktop: the tray, the desktop's files, its opener of links."""

import configparser
import shlex
import subprocess
import unittest
from pathlib import Path

import desk
from desk import notewick, notifications, tray
from desk.story import Chapters

DESKTOP_ENTRY = Path(__file__).parents[2] / "packaging/linux/tools.velk.notewick.desktop"


class OnADesktop(Chapters):
    def work_elsewhere_with_the_widget_hidden(self):
        self.program.choose("Hide floating widget")
        self.program.widget.wait_until_gone()
        desk.xterm("the user's work").window().focus()

    def test_a_left_click_on_its_item_gives_the_widget_the_keyboard(self):
        self.work_elsewhere_with_the_widget_hidden()
        self.program.tray.activate()
        self.wait_until_active(self.program.widget.window)

    def test_a_click_on_a_notification_gives_the_widget_the_keyboard(self):
        self.program.choose("Start at login")
        self.work_elsewhere_with_the_widget_hidden()
        notifications.click()
        self.wait_until_active(self.program.widget.window)

    def test_a_second_start_gives_the_widget_of_the_first_the_keyboard_and_ends(self):
        self.work_elsewhere_with_the_widget_hidden()
        second = self.start()
        self.assertEqual((second.wait(), second.output), (0, ""))
        self.wait_until_active(self.program.widget.window)
        self.assertEqual([item.pid for item in tray.everything()], [self.program.pid])

    def test_its_windows_belong_to_its_desktop_entry(self):
        window = self.program.widget.window
        self.assertIn(f"\nStartupWMClass={window.class_name}\n", DESKTOP_ENTRY.read_text())

    def test_it_opens_the_case_notes_in_the_browser(self):
        self.program.choose("Open my case notes in VELK")
        desk.wait_until(self.home.opened_addresses, what="the browser")
        self.assertEqual(self.home.opened_addresses(), [f"{self.service.origin}/case-notes"])

    def test_it_writes_a_desktop_entry_that_starts_it_at_login(self):
        self.program.choose("Start at login")
        self.wait_for_notification("VELK Notewick", "Will start automatically at login.")
        entry = self.home.configuration / "autostart" / "tools.velk.notewick.desktop"
        subprocess.run(["desktop-file-validate", entry], check=True)
        parsed = configparser.RawConfigParser()
        parsed.read(entry)
        self.assertEqual(shlex.split(parsed["Desktop Entry"]["Exec"]), [notewick.PROGRAM])


if __name__ == "__main__":
    unittest.main()
