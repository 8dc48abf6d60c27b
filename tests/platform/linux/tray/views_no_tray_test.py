"""The status item where no tray is, or comes late."""

import unittest

import desk
from desk import screen, tray, wait_until
from shown_views import ShownViews

NO_TRAY = "No tray on this desktop"
FIRST_CHOICE = "chosen Log: Lena O'Keefe (~12 min, 2024-05-02)"


class WithoutATray(unittest.TestCase):
    def setUp(self):
        self.addCleanup(desk.close_all)

    def show(self, *options):
        views = ShownViews(*options)
        self.addCleanup(views.close)
        return views

    def choose_with(self, views, *keys):
        """Opens the menu by these keys and takes its first item that can be chosen."""
        views.window().focus()
        screen.press(*keys, "Down", "Return")

    def complaints(self, views):
        return [line for line in views.lines if line.startswith(NO_TRAY)]

    def test_says_so_once(self):
        views = self.show("--tray")
        wait_until(lambda: self.complaints(views), timeout=15, what="the line about the tray")
        views.do("notes 2")
        views.do("menu Another menu")
        self.assertEqual(len(self.complaints(views)), 1)

    def test_has_the_menu_in_the_panel(self):
        views = self.show("--tray", "--quick")
        for times, key in enumerate(["Menu", "shift+F10"], start=1):
            self.choose_with(views, key)
            wait_until(lambda: views.lines.count(FIRST_CHOICE) == times, what=f"the choice made with {key}")

    def test_has_the_menu_at_a_right_click(self):
        views = self.show("--tray", "--quick")
        views.window().focus()
        inner = views.window().geometry
        screen.click(inner.x + 4, inner.y + 4, button=3)
        screen.press("Down", "Return")
        views.wait_for(FIRST_CHOICE)

    def test_appears_when_a_tray_comes_and_comes_back(self):
        views = self.show("--tray", "--quick")
        views.window()
        for _ in range(2):
            host = tray.start_host()
            wait_until(lambda: any(i.pid == views.pid for i in tray.everything()), what="the status item")
            host.close()
            wait_until(lambda: not tray.has_host(), what="the end of the host")
        self.choose_with(views, "Menu")
        views.wait_for(FIRST_CHOICE)
        self.assertEqual(self.complaints(views), [])

    def test_shows_titles_to_the_letter_also_after_a_choice_in_the_panel(self):
        views = self.show("--tray", "--quick")
        self.choose_with(views, "Menu")
        views.wait_for(FIRST_CHOICE)
        tray.start_host()
        item = wait_until(lambda: next(i for i in tray.everything() if i.pid == views.pid), what="the status item")
        wait_until(lambda: item.labels(), what="the menu")
        self.assertEqual(item.labels()[0], "Signed in as anna_b@example.org")


if __name__ == "__main__":
    unittest.main()
