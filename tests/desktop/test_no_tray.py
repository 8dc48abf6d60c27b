#!/usr/bin/python3
"""A desktop without a tray, or with one that comes late. Runs in a session with --tray none."""

import unittest

import desk
from desk import screen, tray
from desk.notewick import NO_WORK, SIGNED_OUT, menu
from desk.story import Story

COMPLAINT = (
    "No tray on this desktop: the menu is the context menu of the quick-note panel "
    "(right click, Menu key or Shift+F10).\n"
)


class WithoutATray(Story):
    fast = True

    def test_says_so_once_and_offers_the_menu_in_the_widget(self):
        program = self.start()
        program.sign_in_panel.sign_in()
        window = program.widget.window
        program.wait_for_output(COMPLAINT)
        window.focus()
        screen.press("Menu", "Down", "Down", "Return")  # "Log work now" is the first that can be chosen
        program.widget.wait_until_hidden()
        self.assertEqual(self.home.setting("VELKWidgetVisible"), "false")
        second = self.start()
        self.assertEqual(second.wait(), 0)
        desk.wait_until(lambda: program.widget.window.is_active, what="the widget being active")
        self.assertEqual(program.output.count("No tray"), 1)


class ALateTray(Story):
    def test_gets_the_item(self):
        program = self.start()
        self.assertTrue(program.sign_in_panel.window)
        self.assertEqual(tray.everything(), [])
        host = tray.start_host()
        program.wait_for_menu(menu(SIGNED_OUT, NO_WORK, signed_in=False))
        host.close()
        desk.wait_until(lambda: not tray.has_host(), what="the end of the host")
        tray.start_host()
        program.wait_for_menu(menu(SIGNED_OUT, NO_WORK, signed_in=False))
        self.assertEqual(program.output, "")


if __name__ == "__main__":
    unittest.main()
