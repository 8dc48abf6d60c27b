#!/usr/bin/python3
"""The program on a Wayland desktop, as an ordinary user. Runs in a sway-session."""

import unittest

import desk
from desk import screen
from desk.story import Chapters


class OnWayland(Chapters):
    """Each test begins while the user works in a native window, the widget being hidden."""

    secret_store = False  # the session has none

    def setUp(self):
        super().setUp()
        self.work = desk.zenity("Chat with Tobias Hargreave").window()
        self.hide_widget()
        self.work.focus()

    def hide_widget(self):
        self.program.choose("Hide floating widget")
        self.program.widget.wait_until_gone()

    def wait_until_it_floats(self):
        desk.wait_until(lambda: self.program.widget.window.is_floating, what="the widget floating")

    def test_the_widget_floats_through_xwayland_and_leaves_the_keyboard_where_it_is(self):
        for _ in range(3):
            self.program.choose("Show floating widget")
            self.wait_until_it_floats()
            window = self.program.widget.window
            self.assertTrue(window.is_of_x)
            self.assertLess(window.geometry.width, 400)
            self.assertTrue(self.work.is_active)
            self.hide_widget()
            self.work.focus()

    def test_the_widget_leaves_the_keyboard_also_when_the_compositor_is_slow(self):
        with desk.windows.stopped_manager():
            self.program.choose("Show floating widget")
            self.program.wait_for_entry("Hide floating widget")
        self.wait_until_it_floats()
        self.assertTrue(self.work.is_active)

    def test_the_widget_takes_the_keyboard_when_asked(self):
        for text in ("hidden before", "shown before"):
            self.work.focus()
            self.program.choose("Log work now (call, visit…)")
            self.wait_until_active(self.program.widget.window)
            desk.wait_until(lambda: self.program.widget.note.focused, what="the keyboard")
            screen.type_text(text)
            self.program.widget.note.wait_for_text(text)
            self.program.widget.note.write("")


if __name__ == "__main__":
    unittest.main()
