#!/usr/bin/python3
"""The floating widget of the running program, as the window manager and a user meet it."""

import json
import unittest
from pathlib import Path

import desk
from desk import screen
from desk.notewick import NO_WORK, SENT, WATCHING, menu
from desk.story import Story

DESKTOP_ENTRY = Path(__file__).parents[2] / "packaging/linux/tools.velk.notewick.desktop"
SCREEN_WIDTH = 1280
FLOATING = {"ABOVE", "SKIP_TASKBAR", "SKIP_PAGER"}
CAUGHT = {
    "id": "0A1B2C3D-0000-4000-8000-000000000001",
    "participant": "Lena O'Keefe",
    "day": "2026-01-05",
    "firstSeen": 789000000.0,
    "lastSeen": 789000600.0,
    "observedMinutes": 12,
    "evidence": ["Mail: Lena O'Keefe"],
}
CAUGHT_ROW = "Lena O'Keefe · ~12m · 2026-01-05"
ALSO_CAUGHT = {**CAUGHT, "id": "0A1B2C3D-0000-4000-8000-000000000002", "participant": "Tobias Hargreave"}
ALSO_CAUGHT_ROW = "Tobias Hargreave · ~12m · 2026-01-05"


class WidgetStory(Story):
    def catch(self, *pendings):
        """Work that the program noticed on an earlier day."""
        self.home.support.mkdir(parents=True, mode=0o700)
        (self.home.support / "pending.json").write_text(json.dumps(pendings or [CAUGHT]))

    def move(self, window):
        """Moves it as soon as it stands in its corner: before, nobody can take hold of it."""
        right = SCREEN_WIDTH - 24  # of its frame
        desk.wait_until(lambda: window.geometry.x + window.geometry.width < right, what="the widget in its corner")
        window.move(200, 150)
        desk.wait_until(lambda: self.home.setting("VELKQuickWidget"), what="the place of the widget being kept")

    def stand_in_the_top_left_corner(self):
        """The widget keeps the nearest corner: rows move up when one above them goes."""
        with open(self.home.settings, "a", encoding="utf-8") as settings:
            settings.write("VELKQuickWidget=60 60 320 300\n")

    def wait_until_active(self, window):
        desk.wait_until(lambda: window.is_active, what=f"{window} being active")


class TheWindow(WidgetStory):
    def test_floats_above_the_others_on_all_desktops_and_in_no_task_bar(self):
        window = self.start_signed_in().widget.window
        desk.wait_until(lambda: FLOATING <= window.states, what="a floating window")
        self.assertTrue(window.is_on_all_desktops)
        other = desk.xterm("the user's work").window()
        other.focus()
        shown = window.geometry
        other.move(shown.x, shown.y)
        screen.click(shown.x + 4, shown.y + 4)
        self.wait_until_active(window)

    def test_belongs_to_the_desktop_entry(self):
        window = self.start_signed_in().widget.window
        self.assertIn(f"\nStartupWMClass={window.class_name}\n", DESKTOP_ENTRY.read_text())

    def test_leaves_the_keyboard_where_it_is_when_it_appears(self):
        self.assertEqual(self.start_signed_in().quit(), 0)
        work = desk.xterm("the user's work").window()
        work.focus()
        window = self.start().widget.window
        desk.wait_until(lambda: FLOATING <= window.states, what="the widget being managed")
        self.assertTrue(work.is_active)

    def test_takes_the_keyboard_for_caught_work(self):
        self.catch()
        program = self.start_signed_in()
        work = desk.xterm("the user's work").window()
        work.focus()
        program.widget.wait_for_caught(CAUGHT_ROW)
        self.assertTrue(work.is_active)
        program.widget.log(CAUGHT_ROW)
        self.wait_until_active(program.widget.window)
        self.assertTrue(program.widget.note.focused)

    def test_comes_back_where_it_was_left(self):
        program = self.start_signed_in()
        window = program.widget.window
        self.move(window)
        place = window.geometry
        program.quit()
        again = self.start().widget
        desk.wait_until(lambda: again.window.geometry == place, what=f"the widget at {place}")

    def test_stays_hidden_once_it_was_closed(self):
        program = self.start_signed_in()
        program.widget.window.ask_to_close()
        program.widget.wait_until_hidden()
        program.wait_for_menu(menu(WATCHING, NO_WORK, widget="Show"))
        program.quit()
        again = self.start()
        again.wait_for_menu(menu(WATCHING, NO_WORK, widget="Show"))
        again.choose("Reload participants")
        self.wait_for_notification("VELK Notewick", "Watching for work on 12 participants.")
        self.assertFalse(again.widget.shown)
        again.choose("Show floating widget")
        again.widget.window

    def test_does_not_count_quitting_as_closing(self):
        program = self.start_signed_in()
        program.quit()
        self.assertEqual(self.home.setting("VELKWidgetVisible"), "true")
        self.start().widget.window


class TheForm(WidgetStory):
    def test_names_every_control(self):
        self.catch()
        panel = self.start_signed_in().widget.panel
        usable = [control for control in panel.below() if {"focusable", "showing"} <= control.states]
        unnamed = [c for c in usable if not (c.name or c.labels)]
        self.assertEqual(unnamed, [])
        said = {label for c in usable for label in [c.name, *c.labels]}
        wanted = {"Participant", "What did you do?", "15", "30", "45", "60", "90", "120", "Send to VELK"}
        self.assertLessEqual(wanted | {f"Log {CAUGHT_ROW}", f"Skip {CAUGHT_ROW}"}, said)

    def test_is_filled_and_sent_by_the_keyboard_alone(self):
        program = self.start_signed_in()
        program.choose("Log work now (call, visit…)")
        self.wait_until_active(program.widget.window)
        screen.type_text("Called about rent")
        screen.press("shift+Tab")
        desk.wait_until(lambda: program.widget.participant.focused, what="the chooser having the keyboard")
        screen.type_text("Tob")
        desk.wait_until(lambda: program.widget.participant.name == "Tobias Hargreave", what="the chosen participant")
        screen.press("Tab", "Tab", "Right", "space")
        screen.press("Tab")
        screen.press("space")
        self.service.wait_for_notes("Called about rent")
        [note] = self.service.notes()
        self.assertEqual((note["participantName"], note["durationMinutes"]), ("Tobias Hargreave", 30))

    def test_is_ready_for_a_note_whenever_work_is_to_be_logged(self):
        program = self.start_signed_in()
        program.widget.window.focus()
        program.widget.panel.find("15", "radio button").focus()
        desk.xterm("the user's work").window().focus()
        program.choose("Log work now (call, visit…)")
        self.wait_until_active(program.widget.window)
        screen.type_text("Called about rent")
        program.widget.note.wait_for_text("Called about rent")

    def test_is_filled_and_sent_with_the_mouse(self):
        program = self.start_signed_in()
        self.wait_for_notification("VELK Notewick", "Watching for work on 12 participants.")
        desk.notifications.clear()  # they may lie over the widget
        panel = program.widget.panel
        self.click(program.widget.note)
        self.wait_until_active(program.widget.window)
        screen.type_text("Called about rent")
        self.click(panel.find("90", "radio button"))
        self.click(panel.find("Send to VELK", "push button"))
        self.service.wait_for_notes("Called about rent")
        self.assertEqual(self.service.notes()[0]["durationMinutes"], 90)

    def click(self, control, times=1):
        x, y, width, height = control.geometry
        screen.click(x + width // 2, y + height // 2, times=times)

    def test_says_what_is_missing(self):
        program = self.start_signed_in()
        widget = program.widget
        widget.note.write("  ")
        widget.send()
        widget.wait_for_status("Pick a duration")
        widget.panel.find("15", "radio button").click()
        widget.send()
        widget.wait_for_status("Say what you did")
        widget.wait_for_status("", timeout=10)
        self.assertEqual(self.service.notes(), [])
        widget.note.write("Called about rent")
        widget.send()
        widget.wait_for_status(SENT)
        self.service.wait_for_notes("Called about rent")

    def test_sends_a_note_for_caught_work_under_its_day(self):
        self.catch()
        program = self.start_signed_in()
        program.widget.log(CAUGHT_ROW)
        program.widget.write_note("Helped with the form")
        self.service.wait_for_notes("Helped with the form")
        [note] = self.service.notes()
        self.assertEqual((note["participantName"], note["sessionDate"]), ("Lena O'Keefe", "2026-01-05"))
        self.assertEqual(self.home.list("pending.json"), [])

    def test_drops_one_row_at_a_double_click(self):
        self.catch(CAUGHT, ALSO_CAUGHT)
        self.stand_in_the_top_left_corner()
        program = self.start_signed_in()
        self.wait_for_notification("VELK Notewick", "Watching for work on 12 participants.")
        desk.notifications.clear()  # they may lie over the widget
        panel = program.widget.panel
        self.click(panel.find(f"Skip {CAUGHT_ROW}", "push button"), times=2)
        self.click(program.widget.note)
        screen.type_text("Both clicks were taken before this")
        program.widget.note.wait_for_text("Both clicks were taken before this")
        self.assertEqual(program.widget.caught(), [ALSO_CAUGHT_ROW])
        self.assertEqual(self.home.list("pending.json"), [ALSO_CAUGHT])

    def test_drops_caught_work_that_is_skipped(self):
        self.catch()
        program = self.start_signed_in()
        program.widget.panel.find(f"Skip {CAUGHT_ROW}", "push button").click()
        program.wait_for_menu(menu(WATCHING, NO_WORK))
        self.assertEqual(self.home.list("pending.json"), [])
        self.assertEqual(self.service.notes(), [])


if __name__ == "__main__":
    unittest.main()
