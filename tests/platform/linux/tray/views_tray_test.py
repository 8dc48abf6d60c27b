"""The status item at the tray's host, and its menu over D-Bus."""

import unittest

import desk
from desk import tray, wait_until
from desk.bus_traffic import BusTraffic
from shown_views import ShownViews

SIGNALS = "LayoutUpdated", "ItemsPropertiesUpdated", "NewToolTip", "NewIcon", "NewTitle", "NewMenu"
MENU = [
    "Signed in as anna_b@example.org",
    "Log: Snow & Sons & Daughters (~7 min, 2024-05-02)",
    "-",
    "2 notes waiting to send to VELK",
    "Retry now",
    "-",
    "Log work now (call, visit…)",
    "Quit VELK Notewick",
]


class TheStatusItem(unittest.TestCase):
    def setUp(self):
        self.addCleanup(desk.close_all)
        self.views = ShownViews("--tray", "--quick", "--notes", "2")
        self.item = tray.item(self.views)

    def tool_tip(self):
        return str(self.item.read("ToolTip")[2])

    def test_shows_the_menu_to_the_letter_with_its_shortcuts(self):
        wait_until(lambda: self.item.labels() == MENU, what="the menu")
        entries = [entry for entry in self.item.menu() if not entry.separator]
        self.assertEqual([e.label for e in entries if not e.enabled], [MENU[0], MENU[3]])
        shortcuts = {e.label.split()[0]: e.shortcut for e in entries if e.shortcut}
        self.assertEqual(shortcuts, {"Log": "Control+L", "Quit": "Control+Q"})

    def test_tells_of_an_item_chosen_from_a_menu_that_was_replaced_while_open(self):
        retry = self.item.entry("Retry now")
        self.views.do("menu Another menu")
        self.item.click(retry)
        self.views.wait_for("chosen Retry now")
        wait_until(lambda: self.item.labels() == ["Another menu"], what="the new menu")

    def signals_of(self, *commands, title):
        """What the host is told while these commands are carried out, until the title stands there."""
        with BusTraffic() as traffic:
            for command in commands:
                self.views.do(command)
            wait_until(lambda: self.tool_tip() == f"{title} — VELK Notewick", what=f"the title {title}")
        counted = traffic.count_of(self.views)
        return {name: counted[name] for name in SIGNALS if counted[name]}

    def test_tells_the_host_its_title_and_count_once_a_turn_where_they_differ(self):
        wait_until(lambda: self.tool_tip().startswith("VELK (2)"), what="the first drawing")
        told = self.signals_of("notes 9 8 7 3", "notes 3 4 3", title="VELK (3)")
        self.assertEqual(told, {"ItemsPropertiesUpdated": 1, "NewToolTip": 1, "NewIcon": 1})
        told = self.signals_of("notes 0", title="VELK")
        self.assertEqual(told, {"LayoutUpdated": 1, "NewToolTip": 1, "NewIcon": 1})
        plain = self.item.read("IconPixmap")
        told = self.signals_of("notes 250", title="VELK (250)")
        self.assertEqual(told, {"LayoutUpdated": 1, "NewToolTip": 1, "NewIcon": 1})
        self.assertNotEqual(self.item.read("IconPixmap"), plain, "the badge")
        told = self.signals_of("notes 251", title="VELK (251)")
        self.assertEqual(told, {"ItemsPropertiesUpdated": 1, "NewToolTip": 1}, "9+ is on the icon as before")


if __name__ == "__main__":
    unittest.main()
