#!/usr/bin/python3
"""The main job: from a title on the screen to a case note, in time that runs sixty times faster."""

import re
import unittest
from pathlib import Path

import desk
from desk import local_service, screen
from desk.fast_time import DAY
from desk.notewick import NO_WORK, WATCHING, menu
from desk.story import Story

SESSION_ENDS = 25  # seconds; ten minutes of the fast clock are ten
ENOUGH_SIGHTINGS = 5


class TheMainJob(Story):
    fast = True

    def work_on(self, window, name):
        """Has this window in front until its participant was seen often enough."""
        window.focus()
        seen = f'matches=["{name}"]'
        desk.wait_until(
            lambda: sum(line.endswith(seen) for line in self.home.watch_log()) >= ENOUGH_SIGHTINGS,
            what=f"enough sightings of {name}",
        )

    def turn_to_something_else(self):
        desk.zenity("Lunch").window("Lunch").focus()

    def minutes_of(self, name):
        """What the notification about this participant says, once it is there."""
        body = desk.notifications.wait_for(f"Log it? — {name}", SESSION_ENDS).body
        said = re.fullmatch(
            rf"Looks like you worked on {name} \(~(\d+) min on screen\)\. Confirm it in the floating widget\.", body
        )
        self.assertIsNotNone(said, body)
        return int(said[1])

    def catch(self, name):
        """Work on this participant that was noticed and has ended; returns the minutes."""
        self.work_on(desk.xterm(f"Re: rent — {name}").window(), name)
        self.turn_to_something_else()
        return self.minutes_of(name)


class FromATitleToACaseNote(TheMainJob):
    def test_with_the_widget(self):
        program = self.start_signed_in()
        minutes = self.catch("Tobias Hargreave")
        program.wait_for_menu(menu(WATCHING, [f"Log: Tobias Hargreave (~{minutes} min, {DAY})"]))
        [pending] = self.home.list("pending.json")
        self.assertEqual((pending["day"], pending["evidence"]), (DAY, ["Re: rent — Tobias Hargreave"]))

        row = f"Tobias Hargreave · ~{minutes}m · {DAY}"
        program.widget.wait_for_caught(row)
        program.widget.log(row)
        desk.wait_until(lambda: program.widget.participant.name == "Tobias Hargreave", what="the chosen participant")
        program.widget.panel.find(f"On screen ≈ {minutes} min — you set the duration.", "label")
        program.widget.write_note("Called the landlord about <rent> & heating", 45)

        self.wait_for_notification(
            "Captured — Tobias Hargreave",
            "Parked in VELK (45 min). Write it up from your case-notes page when you're ready.",
        )
        program.wait_for_menu(menu(WATCHING, NO_WORK))
        self.assertEqual(program.widget.caught(), [])
        [note] = self.service.notes()
        self.assertEqual(
            {key: note[key] for key in ("participantName", "input", "durationMinutes", "sessionDate")},
            {
                "participantName": "Tobias Hargreave",
                "input": "Called the landlord about <rent> & heating",
                "durationMinutes": 45,
                "sessionDate": DAY,
            },
        )
        page = self.service.case_notes_page()
        self.assertIn("<h2>Tobias Hargreave</h2>", page)
        self.assertIn("Called the landlord about &lt;rent&gt; &amp; heating", page)
        self.assertRegex(
            self.home.text(f"captures-{DAY}.log"),
            rf"^\d\d:\d\d · Tobias Hargreave · 45 min · {DAY} · Called the landlord about <rent> & heating\n$",
        )

    def test_by_the_keyboard_alone(self):
        program = self.start_signed_in()
        minutes = self.catch("Lena O'Keefe")
        program.widget.wait_for_caught(f"Lena O'Keefe · ~{minutes}m · {DAY}")
        program.widget.window.focus()
        screen.press("Tab", "Tab", "Tab", "Return")  # from the note over the minutes and "Send" to the row's "Log"
        desk.wait_until(lambda: program.widget.note.focused, what="the note having the keyboard")
        screen.type_text("Visited at home")
        screen.press("Tab", "Right", "Right", "space", "ctrl+Return")
        self.service.wait_for_notes("Visited at home")
        [note] = self.service.notes()
        self.assertEqual((note["participantName"], note["durationMinutes"]), ("Lena O'Keefe", 45))
        program.wait_for_menu(menu(WATCHING, NO_WORK))


class WhatIsSeen(TheMainJob):
    def test_real_programs_of_several_kinds(self):
        program = self.start_signed_in()
        self.wait_for_notification("VELK Notewick", "Screen access on — now watching for participant work.")
        letter = Path(self.home.folder, "Amara Osei.txt")
        letter.write_text("Dear Amara")
        self.work_on(desk.xterm("Mail: Tobias Hargreave").window(), "Tobias Hargreave")
        self.work_on(desk.mousepad(letter).window(), "Amara Osei")
        self.work_on(desk.zenity("Chat with ZOË LINDQVIST").window(), "Zoë Lindqvist")
        self.turn_to_something_else()
        minutes = {name: self.minutes_of(name) for name in ("Tobias Hargreave", "Amara Osei", "Zoë Lindqvist")}
        self.assertEqual(
            [pending["participant"] for pending in self.home.list("pending.json")],
            list(minutes),
        )
        self.assertEqual(len(program.widget.caught()), 3)
        program.choose(f"Log: Amara Osei (~{minutes['Amara Osei']} min, {DAY})")
        desk.wait_until(lambda: program.widget.window.is_active, what="the widget being active")
        self.assertEqual(program.widget.participant.name, "Amara Osei")

    def test_nothing_while_paused(self):
        program = self.start_signed_in()
        window = desk.xterm("Mail: Tobias Hargreave").window()
        self.work_on(window, "Tobias Hargreave")
        self.service.fail(status=503)
        program.widget.write_note("Called about rent")
        program.choose("Pause watching")
        program.wait_for_entry("Paused")
        seen = self.home.watch_log()
        window.retitle("Mail: Lena O'Keefe")
        tries = len(self.service.requests(local_service.CAPTURE))
        desk.wait_until(
            lambda: len(self.service.requests(local_service.CAPTURE)) >= tries + 3, what="two minutes of retrying"
        )
        self.assertEqual(self.home.watch_log(), seen)
        program.choose("Resume watching")
        self.work_on(window, "Lena O'Keefe")


if __name__ == "__main__":
    unittest.main()
