"""The status item at the tray's host, and its menu over D-Bus."""

import unittest

import desk
from desk import tray, wait_until
from shown_views import ShownViews

MENU = [
    "Signed in as anna_b@example.org",
    "Watching · 12 participants",
    "-",
    "Log: Lena O'Keefe (~12 min, 2024-05-02)",
    "Log: Snow & Sons & Daughters (~7 min, 2024-05-02)",
    "-",
    "2 notes waiting to send to VELK",
    "Retry now",
    "-",
    "Log work now (call, visit…)",
    "Hide floating widget",
    "Open my case notes in VELK",
    "-",
    "Pause watching",
    "Reload participants",
    "Start at login",
    "Sign out of VELK",
    "-",
    "Quit VELK Notewick",
]


class TheStatusItem(unittest.TestCase):
    def setUp(self):
        self.addCleanup(desk.close_all)
        self.views = ShownViews("--tray", "--quick")
        self.addCleanup(self.views.close)
        self.item = self.item_at_the_host()

    def item_at_the_host(self):
        return wait_until(
            lambda: next((i for i in tray.everything() if i.pid == self.views.pid), None), what="the status item"
        )

    def tool_tip(self):
        return str(self.item.read("ToolTip")[2])

    def test_shows_the_menu_to_the_letter(self):
        wait_until(lambda: self.item.labels() == MENU, what="the menu")
        enabled = {entry.label for entry in self.item.menu() if entry.enabled and not entry.separator}
        self.assertEqual(set(MENU) - enabled - {"-"}, {MENU[0], MENU[1], MENU[6]})

    def test_shows_shortcuts(self):
        shortcuts = {entry.label: entry.shortcut for entry in self.item.menu() if entry.shortcut}
        self.assertEqual(
            shortcuts,
            {
                "Log work now (call, visit…)": "Control+L",
                "Hide floating widget": "Control+W",
                "Open my case notes in VELK": "Control+O",
                "Pause watching": "Control+P",
                "Quit VELK Notewick": "Control+Q",
            },
        )

    def test_tells_what_is_chosen(self):
        self.item.choose("Log: Snow & Sons & Daughters (~7 min, 2024-05-02)")
        self.views.wait_for("chosen Log: Snow & Sons & Daughters (~7 min, 2024-05-02)")

    def test_tells_of_an_item_chosen_from_a_menu_that_was_replaced_while_open(self):
        retry = self.item.entry("Retry now")
        self.views.do("menu Another menu")
        self.item.click(retry)
        self.views.wait_for("chosen Retry now")
        wait_until(lambda: self.item.labels() == ["Another menu"], what="the new menu")

    def test_quits(self):
        self.item.choose("Quit VELK Notewick")
        self.assertEqual(self.views.wait(), 0)
        self.assertNotIn("closed", self.views.lines)

    def test_gives_the_keyboard_to_the_panel_when_it_is_clicked(self):
        desk.xterm("the user's work").window().focus()
        self.item.activate()
        self.views.wait_for("clicked")
        wait_until(lambda: self.views.window().is_active, what="the panel being active")

    def test_shows_its_title_and_count(self):
        self.assertEqual(self.tool_tip(), "VELK — VELK Notewick")
        plain = self.item.read("IconPixmap")
        self.views.do("title  VELK (5)")
        wait_until(lambda: self.tool_tip() == "VELK (5) — VELK Notewick", what="the title with the count")
        wait_until(lambda: self.item.read("IconPixmap") != plain, what="the badge")


if __name__ == "__main__":
    unittest.main()
