#!/usr/bin/python3
"""The program's item in the tray: its menu is read, and every command of it is clicked."""

import configparser
import shlex
import signal
import subprocess
import unittest

import desk
from desk import notewick, tray
from desk.local_service import EMAIL
from desk.notewick import NO_WORK, SIGNED_OUT, WATCHING, menu, stored_token
from desk.story import Story


class TheCommands(Story):
    def setUp(self):
        super().setUp()
        self.program = self.start_signed_in()

    def test_pause_and_resume(self):
        self.program.choose("Pause watching")
        self.program.wait_for_menu(menu([WATCHING[0], "Paused"], NO_WORK, watching="Resume"))
        self.program.choose("Resume watching")
        self.program.wait_for_menu(menu(WATCHING, NO_WORK))

    def test_hide_and_show_the_widget(self):
        self.program.choose("Hide floating widget")
        self.program.widget.wait_until_hidden()
        self.program.wait_for_menu(menu(WATCHING, NO_WORK, widget="Show"))
        self.program.choose("Show floating widget")
        self.program.widget.window
        self.program.wait_for_menu(menu(WATCHING, NO_WORK))

    def test_reload_the_participants(self):
        desk.notifications.clear()
        (self.home.support / "participants.json").write_text("[]")
        self.program.choose("Reload participants")
        self.wait_for_notification("VELK Notewick", "Watching for work on 12 participants.")
        self.assertEqual(len(self.home.list("participants.json")), 12)

    def test_log_work_now(self):
        desk.xterm("the user's work").window().focus()
        self.program.choose("Log work now (call, visit…)")
        desk.wait_until(lambda: self.program.widget.window.is_active, what="the widget being active")

    def test_open_the_case_notes(self):
        self.program.choose("Open my case notes in VELK")
        desk.wait_until(self.home.opened_addresses, what="the browser")
        self.assertEqual(self.home.opened_addresses(), [f"{self.service.origin}/case-notes"])

    def test_start_at_login(self):
        self.program.choose("Start at login")
        self.wait_for_notification("VELK Notewick", "Will start automatically at login.")
        entry = self.home.configuration / "autostart" / "tools.velk.notewick.desktop"
        written = entry.read_text()
        subprocess.run(["desktop-file-validate", entry], check=True)
        parsed = configparser.RawConfigParser()
        parsed.read_string(written)
        self.assertEqual(shlex.split(parsed["Desktop Entry"]["Exec"]), [notewick.PROGRAM])
        self.program.choose("Start at login")
        desk.wait_until(lambda: self.notification_count("VELK Notewick") >= 4, what="the second confirmation")
        self.assertEqual(entry.read_text(), written)

    def test_sign_out_and_in_again(self):
        self.program.choose("Sign out of VELK")
        self.program.widget.wait_until_hidden()
        self.assertTrue(self.program.sign_in_panel.window)
        self.program.wait_for_menu(menu(SIGNED_OUT, NO_WORK, signed_in=False))
        self.assertIsNone(stored_token())
        self.assertEqual(self.home.list("participants.json"), [])
        self.program.sign_in_panel.window.close()
        self.program.choose("Sign in to VELK…")
        self.program.sign_in()
        self.program.widget.window

    def test_quit(self):
        self.assertEqual(self.program.quit(), 0)
        self.assertEqual(self.program.output, "")


class TheItem(Story):
    def test_logs_work_at_a_left_click(self):
        program = self.start_signed_in()
        desk.xterm("the user's work").window().focus()
        program.tray.activate()
        desk.wait_until(lambda: program.widget.window.is_active, what="the widget being active")

    def test_asks_someone_signed_out_to_sign_in_at_a_left_click(self):
        program = self.start()
        program.sign_in_panel.window.close()
        program.tray.activate()
        program.sign_in_panel.window

    def test_counts_what_waits(self):
        program = self.start_signed_in()
        self.service.fail(status=503)
        program.widget.write_note("Called about rent")
        program.widget.write_note("Visited")
        outbox = ["2 notes waiting to send to VELK"]
        program.wait_for_menu(menu(WATCHING, NO_WORK, outbox))
        desk.wait_until(
            lambda: str(program.tray.read("ToolTip")[2]).startswith("VELK (2)"), what="the count at the item"
        )

    def test_goes_with_the_program(self):
        program = self.start_signed_in()
        item = program.tray
        program.signal(signal.SIGTERM)
        self.assertEqual(program.wait(), 0)
        desk.wait_until(lambda: not item.exists, what="the end of the tray item")


class ASecondStart(Story):
    def test_shows_the_widget_of_the_first_and_ends(self):
        program = self.start_signed_in()
        program.choose("Hide floating widget")
        program.widget.wait_until_hidden()
        desk.xterm("the user's work").window().focus()
        second = self.start()
        self.assertEqual((second.wait(), second.output), (0, ""))
        desk.wait_until(lambda: program.widget.window.is_active, what="the widget being active")
        self.assertEqual([item.pid for item in tray.everything()].count(program.pid), 1)
        self.assertTrue(program.has(f"Signed in as {EMAIL}"))

    def test_leaves_the_self_test_alone(self):
        self.start_signed_in()
        test = self.start("--selftest")
        self.assertEqual(test.wait(), 0)
        self.assertIn(self.service.origin, test.output)


if __name__ == "__main__":
    unittest.main()
