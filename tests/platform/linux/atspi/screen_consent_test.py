"""Leave to read titles from the accessibility bus, where the desktop's setting is off at first."""

import subprocess
import unittest

import desk
from title_reader import Reader

QUESTION = "VELK Notewick"


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

    def test_yes_turns_the_setting_on(self):
        self.open_question()
        desk.screen.press("alt+t")
        self.reader.wait_for(lambda sample: sample.trusted, "trust")
        desk.zenity("Tobias Hargreave").window().focus()
        desk.windows.wait_until_gone(QUESTION)

    def test_return_escape_and_a_close_are_a_no(self):
        close = lambda: self.question().ask_to_close()
        for say_no in (lambda: desk.screen.press("Return"), lambda: desk.screen.press("Escape"), close):
            self.open_question()
            say_no()
            desk.windows.wait_until_gone(QUESTION)
            self.assertFalse(self.reader.sample().trusted)

    def test_asks_once_at_a_time_above_the_other_windows_and_without_blocking(self):
        question = self.open_question()
        desk.wait_until(lambda: "ABOVE" in question.states, what="the question above the others")
        self.assertEqual(self.reader.wait_for_focus(QUESTION).windows, [QUESTION])
        self.assertFalse(self.reader.ask_for_leave().trusted)
        self.assertEqual(len(self.questions()), 1)

    def test_follows_the_setting_and_never_asks_by_reading_nor_where_it_is_on(self):
        self.assertFalse(self.reader.sample().trusted)
        set_accessibility("true")
        self.reader.wait_for(lambda sample: sample.trusted, "trust")
        self.assertTrue(self.reader.ask_for_leave().trusted)
        desk.xterm("another window")
        self.assertEqual(self.questions(), [])
        set_accessibility("false")
        self.reader.wait_for(lambda sample: not sample.trusted, "the end of trust")


if __name__ == "__main__":
    unittest.main()
