"""Leave to read titles from the accessibility bus, where the desktop's setting is off at first."""

import subprocess
import unittest

import desk
from title_reader import Reader

QUESTION = "VELK Notewick"
SCREEN_HEIGHT = 800


def set_accessibility(value):
    subprocess.run(
        ["gdbus", "call", "--session", "-d", "org.a11y.Bus", "-o", "/org/a11y/bus", "-m",
         "org.freedesktop.DBus.Properties.Set", "org.a11y.Status", "IsEnabled", f"<{value}>"],
        check=True, capture_output=True, timeout=10,
    )  # fmt: skip


class Consent(unittest.TestCase):
    def setUp(self):
        set_accessibility("false")
        self.addCleanup(desk.close_all)
        self.reader = Reader("--reader", "atspi", QT_QPA_PLATFORM="xcb")
        self.addCleanup(self.reader.close)

    def question(self):
        return desk.windows.wait_for(QUESTION, pid=self.reader.pid)

    def open_question(self):
        self.reader.ask_for_leave()
        question = self.question()
        question.focus()
        return question

    def questions(self):
        return [w for w in desk.windows.everything() if w.pid == self.reader.pid]

    def test_reading_alone_never_asks(self):
        self.assertFalse(self.reader.sample().trusted)
        desk.xterm("another window")
        self.assertEqual(self.questions(), [])

    def test_asks_without_blocking(self):
        self.assertFalse(self.reader.ask_for_leave().trusted)
        self.question()
        self.assertFalse(self.reader.sample().trusted)

    def test_stands_above_the_others_in_the_bottom_left_corner(self):
        question = self.open_question()
        desk.wait_until(lambda: "ABOVE" in question.states, what="the question above the others")
        place = question.geometry
        self.assertAlmostEqual(place.x, 24, delta=8)
        self.assertAlmostEqual(place.y + place.height, SCREEN_HEIGHT - 50, delta=26)

    def test_yes_turns_the_setting_on(self):
        self.open_question()
        desk.screen.press("alt+t")
        self.reader.wait_for(lambda sample: sample.trusted, "trust")
        desk.zenity("Tobias Hargreave").window().focus()
        desk.windows.wait_until_gone(QUESTION)

    def test_no_is_the_default_and_changes_nothing(self):
        self.open_question()
        desk.screen.press("Return")
        desk.windows.wait_until_gone(QUESTION)
        self.assertFalse(self.reader.sample().trusted)

    def test_closing_the_question_is_a_no(self):
        self.open_question().ask_to_close()
        desk.windows.wait_until_gone(QUESTION)
        self.assertFalse(self.reader.sample().trusted)

    def test_asks_once_at_a_time_and_again_when_wanted(self):
        self.open_question()
        self.reader.ask_for_leave()
        self.assertEqual(len(self.questions()), 1)
        desk.screen.press("Escape")
        desk.windows.wait_until_gone(QUESTION)
        self.open_question()

    def test_follows_the_setting_when_it_is_changed_elsewhere(self):
        self.assertFalse(self.reader.sample().trusted)
        set_accessibility("true")
        self.reader.wait_for(lambda sample: sample.trusted, "trust")
        set_accessibility("false")
        self.reader.wait_for(lambda sample: not sample.trusted, "the end of trust")

    def test_never_asks_where_the_setting_is_on(self):
        set_accessibility("true")
        self.reader.wait_for(lambda sample: sample.trusted, "trust")
        self.assertTrue(self.reader.ask_for_leave().trusted)
        desk.xterm("another window")
        self.assertEqual(self.questions(), [])

    def test_its_own_question_is_read_while_it_has_the_focus(self):
        self.open_question()
        self.assertEqual(self.reader.wait_for_focus(QUESTION).windows, [QUESTION])


if __name__ == "__main__":
    unittest.main()
