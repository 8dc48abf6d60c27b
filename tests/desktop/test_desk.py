#!/usr/bin/python3
"""The language of the desktop tests, on real programs. Runs in a session with --keyring locked."""

import subprocess
import unittest
from pathlib import Path
from tempfile import TemporaryDirectory

import desk

TITLE = "Plan — Tobias Hargreave"


class DeskTest(unittest.TestCase):
    def setUp(self):
        self.addCleanup(desk.close_all)


class Windows(DeskTest):
    def test_tells_title_process_and_activity(self):
        terminal = desk.xterm(TITLE)
        dialogue = desk.zenity('a "quoted" \\ title')
        self.assertEqual(desk.windows.find(TITLE).pid, terminal.pid)
        terminal.window().focus()
        self.assertEqual(desk.windows.active().title, TITLE)
        dialogue.window('a "quoted" \\ title').focus()
        self.assertFalse(terminal.window().is_active)

    def test_changes_a_title(self):
        window = desk.xterm("before").window()
        window.retitle(TITLE)
        self.assertEqual([w.title for w in desk.windows.everything() if w == window], [TITLE])

    def test_closes_as_a_user_does(self):
        dialogue = desk.zenity("question")
        dialogue.window().close()
        self.assertNotEqual(dialogue.wait(), 0)
        self.assertIsNone(desk.windows.find("question"))


class Controls(DeskTest):
    def test_writes_types_and_clicks(self):
        form = desk.start("zenity", "--forms", "--title=form", "--text=t", "--add-entry=Name", "--add-entry=Town")
        form.window("form").focus()
        controls = desk.controls.of(form)
        name, town = sorted(controls.all(role="text"), key=lambda control: control.geometry[1])
        name.write("Lena O'Keefe — ü")
        town.focus()
        desk.screen.type_text("Cork (IE)")
        town.wait_for_text("Cork (IE)")
        controls.find("OK", role="push button").click()
        self.assertEqual(form.wait(), 0)
        self.assertIn("Lena O'Keefe — ü|Cork (IE)", form.output)

    def test_chooses_an_entry(self):
        form = desk.start(
            "zenity", "--forms", "--title=form", "--text=t", "--add-combo=Who", "--combo-values=Ann|Bob|Cy"
        )
        controls = desk.controls.of(form)
        box = controls.find(role="combo box")
        self.assertEqual(box.entries(), ["Ann", "Bob", "Cy"])
        box.choose("Bob")
        controls.find("OK").click()
        form.wait()
        self.assertIn("Bob", form.output)

    def test_follows_an_editor(self):
        with TemporaryDirectory() as folder:
            path = Path(folder, "note.txt")
            path.write_text("one line")
            editor = desk.mousepad(path)
            self.assertIn("note.txt", editor.window().title)
            desk.controls.of(editor).find(role="text").wait_for_text("one line")


class Notifications(DeskTest):
    def test_reads_back_what_was_shown(self):
        desk.notifications.clear()
        subprocess.run(["notify-send", "-a", "App", TITLE, "a &amp; b"], check=True)
        subprocess.run(["notify-send", "second"], check=True)
        self.assertEqual(desk.notifications.count_displayed(), 2)
        note = desk.notifications.wait_for(TITLE)
        self.assertEqual((note.app, note.body), ("App", "a &amp; b"))
        self.assertEqual([n.summary for n in desk.notifications.everything()], [TITLE, "second"])
        desk.notifications.clear()
        self.assertEqual(desk.notifications.everything(), [])


class Keyring(DeskTest):
    def setUp(self):
        super().setUp()
        desk.keyring.unlock()
        desk.keyring.store("token", service="s")
        self.addCleanup(desk.keyring.lock)

    def ask(self):
        desk.keyring.lock()
        return desk.start("secret-tool", "lookup", "service", "s")

    def test_finds_what_is_stored(self):
        self.assertEqual(desk.keyring.lookup(service="s"), "token")
        self.assertIsNone(desk.keyring.lookup(service="other"))
        desk.keyring.lock()
        self.assertIsNone(desk.keyring.lookup(service="s"))

    def test_answers_the_prompt(self):
        question = self.ask()
        desk.keyring.answer_prompt()
        self.assertEqual((question.wait(), question.output), (0, "token"))

    def test_dismisses_the_prompt(self):
        question = self.ask()
        desk.keyring.dismiss_prompt()
        self.assertEqual((question.wait(), question.output), (1, ""))
        self.assertTrue(desk.keyring.is_locked())


class Waiting(DeskTest):
    def test_says_for_what_it_waited(self):
        with self.assertRaisesRegex(desk.TimedOut, "the end of time"):
            desk.wait_until(lambda: False, timeout=0.1, what="the end of time")

    def test_takes_an_exception_for_not_yet(self):
        answers = iter([ValueError, ValueError, 7])

        def answer():
            value = next(answers)
            if value is ValueError:
                raise value
            return value

        self.assertEqual(desk.wait_until(answer), 7)


if __name__ == "__main__":
    unittest.main()
