#!/usr/bin/python3
"""The program on a Wayland desktop, as an ordinary user. Runs in a sway-session."""

import unittest

import desk
from desk import screen
from desk.story import Story

SESSION_ENDS = 25  # seconds; ten minutes of the fast clock are ten


class OnWayland(Story):
    secret_store = False  # the session has none

    def start_signed_in(self):
        program = self.start()
        program.sign_in_panel.sign_in()
        program.sign_in_panel.wait_until_gone()
        return program


class WorkOnWayland(OnWayland):
    fast = True

    def test_makes_a_case_note_of_work_in_native_windows(self):
        program = self.start_signed_in()
        chat = desk.zenity("Chat with Tobias Hargreave").window()
        chat.focus()
        seen = 'matches=["Tobias Hargreave"]'
        desk.wait_until(
            lambda: sum(line.endswith(seen) for line in self.home.watch_log()) >= 5, what="enough sightings"
        )
        desk.xterm("Lunch").window().focus()
        desk.notifications.wait_for("Log it? — Tobias Hargreave", SESSION_ENDS)
        [row] = desk.wait_until(program.widget.caught, what="the caught row")
        program.widget.log(row)
        program.widget.write_note("Called about rent", 30)
        self.service.wait_for_notes("Called about rent")
        self.wait_for_notification(
            "Captured — Tobias Hargreave",
            "Parked in VELK (30 min). Write it up from your case-notes page when you're ready.",
        )

    def test_sees_native_and_x_programs(self):
        self.start_signed_in()
        terminal = desk.xterm("Mail: Lena O'Keefe")
        terminal.window().focus()
        desk.wait_until(lambda: "matches=[\"Lena O'Keefe\"]" in self.home.text("watch.log"), what="an X program")
        letter = self.home.folder / "Amara Osei.txt"
        letter.write_text("Dear Amara")
        desk.mousepad(letter).window().focus()
        desk.wait_until(lambda: 'matches=["Amara Osei"]' in self.home.text("watch.log"), what="a native program")


class TheWidgetOnWayland(OnWayland):
    fast = False

    def test_floats_through_xwayland_and_leaves_the_keyboard_where_it_is(self):
        program = self.start_signed_in()
        work = desk.zenity("the user's work").window()
        for _ in range(3):
            program.choose("Hide floating widget")
            program.widget.wait_until_hidden()
            work.focus()
            program.choose("Show floating widget")
            window = program.widget.window
            desk.wait_until(lambda w=window: w.is_floating, what="the widget floating")
            self.assertTrue(window.is_of_x)
            self.assertLess(window.geometry.width, 400)
            self.assertTrue(work.is_active)

    def test_leaves_the_keyboard_also_when_the_compositor_is_slow(self):
        program = self.start_signed_in()
        program.choose("Hide floating widget")
        program.widget.wait_until_hidden()
        work = desk.zenity("the user's work").window()
        work.focus()
        with desk.windows.slow_manager():
            program.choose("Show floating widget")
        desk.wait_until(lambda: program.widget.window.is_floating, what="the widget floating")
        self.assertTrue(work.is_active)

    def test_takes_the_keyboard_when_asked(self):
        program = self.start_signed_in()
        work = desk.zenity("the user's work").window()
        for text in ("shown before", "hidden before"):
            work.focus()
            program.choose("Log work now (call, visit…)")
            desk.wait_until(lambda: program.widget.window.is_active, what="the widget being active")
            screen.type_text(text)
            program.widget.note.wait_for_text(text)
            program.widget.note.write("")
            program.choose("Hide floating widget")
            program.widget.wait_until_hidden()


if __name__ == "__main__":
    unittest.main()
