#!/usr/bin/python3
"""The main job: from a title on the screen to a case note, in time that runs twenty times faster."""

import unittest

import desk
from desk import notifications, screen
from desk.fast_time import DAY
from desk.notewick import WATCHING, menu
from desk.story import Chapters

SESSION_ENDS = 60  # seconds; ten minutes of the fast clock are thirty
ENOUGH_SIGHTINGS = 5
NAMES = ["Sofia Papadaki", "Tobias Hargreave", "Zoë Lindqvist"]  # those that end at once come in this order


class FromATitleToACaseNote(Chapters):
    """Three people were worked on, each in a program of another kind; each test logs the work on one."""

    fast = True
    factor = 20  # the service has three seconds for an answer

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        letter = cls.folder / f"{NAMES[1]}.txt"
        letter.write_text("Dear Tobias")
        cls.work_in(desk.xterm(f"Re: rent — {NAMES[0]}"), NAMES[0])
        cls.work_in(desk.mousepad(letter), NAMES[1])
        cls.work_in(desk.zenity(f"Chat with {NAMES[2].upper()}"), NAMES[2])
        desk.xterm("Lunch").window().focus()
        cls.asked = [notifications.wait_for(f"Log it? — {name}", SESSION_ENDS) for name in NAMES]
        cls.pendings = cls.home.list("pending.json")
        cls.menu_after_lunch = cls.program.menu()

    @classmethod
    def work_in(cls, program, name):
        """Has this program in front until its participant was seen often enough."""
        program.window().focus()
        seen = f'matches=["{name}"]'
        desk.wait_until(
            lambda: sum(line.endswith(seen) for line in cls.home.watch_log()) >= ENOUGH_SIGHTINGS,
            what=f"enough sightings of {name}",
        )
        program.close()

    def minutes_of(self, name):
        return next(p["observedMinutes"] for p in self.pendings if p["participant"] == name)

    def row_of(self, name):
        return f"{name} · ~{self.minutes_of(name)}m · {DAY}"

    def test_the_user_is_asked_to_log_what_was_seen(self):
        self.assertEqual([p["participant"] for p in self.pendings], NAMES)
        self.assertEqual(self.pendings[0]["evidence"], [f"Re: rent — {NAMES[0]}"])
        for name, notification in zip(NAMES, self.asked):
            self.assertEqual(
                notification.body,
                f"Looks like you worked on {name} (~{self.minutes_of(name)} min on screen). "
                "Confirm it in the floating widget.",
            )
        entries = [f"Log: {name} (~{self.minutes_of(name)} min, {DAY})" for name in NAMES]
        self.assertEqual(self.menu_after_lunch, menu(WATCHING, entries))

    def test_with_the_keyboard_alone(self):
        widget = self.program.widget
        widget.window.focus()
        # From the note over the minutes and "Send" to the first "Log".
        screen.press("Tab", "Tab", "Tab", "Return")
        desk.wait_until(
            lambda: widget.participant.name == NAMES[0] and widget.note.focused, what="the filled form"
        )
        screen.type_text("Visited at home")
        screen.press("Tab", "Right", "Right", "space", "ctrl+Return")
        self.service.wait_for_notes("Visited at home")
        [note] = self.service.notes()
        self.assertEqual((note["participantName"], note["durationMinutes"]), (NAMES[0], 45))

    def test_with_the_widget(self):
        widget, name = self.program.widget, NAMES[1]
        widget.log(self.row_of(name))
        desk.wait_until(lambda: widget.participant.name == name, what="the chosen participant")
        widget.panel.find(f"On screen ≈ {self.minutes_of(name)} min — you set the duration.", "label")
        text = "Called the landlord about <rent> & heating"
        widget.write_note(text, 45)
        self.wait_for_notification(
            f"Captured — {name}",
            "Parked in VELK (45 min). Write it up from your case-notes page when you're ready.",
        )
        self.assertNotIn(self.row_of(name), widget.caught())
        [note] = self.service.notes()
        kept = [note[key] for key in ("participantName", "input", "durationMinutes", "sessionDate")]
        self.assertEqual(kept, [name, text, 45, DAY])
        self.assertRegex(
            self.home.text(f"captures-{DAY}.log"), rf"(?m)^\d\d:\d\d · {name} · 45 min · {DAY} · {text}$"
        )

    def test_with_the_menu(self):
        desk.xterm("the user's work").window().focus()
        self.program.choose(f"Log: {NAMES[2]} (~{self.minutes_of(NAMES[2])} min, {DAY})")
        self.wait_until_active(self.program.widget.window)
        self.assertEqual(self.program.widget.participant.name, NAMES[2])
        self.program.widget.write_note("Wrote to the school")
        self.service.wait_for_notes("Wrote to the school")


if __name__ == "__main__":
    unittest.main()
