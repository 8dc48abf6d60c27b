#!/usr/bin/python3
"""The secret store is asked once: the program remembers what it was told until the store reports a change."""

import json
import unittest

import desk
from desk import keyring
from desk.notewick import NO_WORK, WATCHING, menu
from desk.story import Story

NOTES = 30


class TheRememberedToken(Story):
    def put_notes_into_the_outbox(self):
        participant = self.home.list("participants.json")[0]
        notes = [
            {
                "id": f"0A1B2C3D-0000-4000-8000-{number:012}",
                "participantId": participant["id"],
                "participantName": participant["first_name"],
                "input": f"Call {number}",
                "minutes": 15,
                "sessionDate": "2026-03-02",
                "attempts": 0,
                "lastError": "",
            }
            for number in range(NOTES)
        ]
        (self.home.support / "outbox.json").write_text(json.dumps(notes))

    def every_note_had_its_try(self):
        """By then every refresh of the start has been answered and its token stored."""
        return all(note["attempts"] > 0 for note in self.home.list("outbox.json"))

    def test_is_fetched_once_and_no_note_and_no_menu_asks_again(self):
        self.assertEqual(self.start_signed_in().quit(), 0)
        self.put_notes_into_the_outbox()
        self.service.fail(status=503)
        with keyring.Listener() as store:
            program = self.start()
            program.wait_for_menu(menu(WATCHING, NO_WORK, [f"{NOTES} notes waiting to send to VELK"]))
            desk.wait_until(self.every_note_had_its_try, what="a failed attempt of every note")
            program.choose("Pause watching")
            program.wait_for_entry("Paused")
            asked = store.members()
            self.assertEqual(asked.count("GetSecret"), 1)
            self.service.work_again()
            program.choose("Retry now")
            program.choose("Resume watching")
            program.wait_for_menu(menu(WATCHING, NO_WORK))
            self.assertEqual(len(self.service.notes()), NOTES)
            self.assertEqual(store.members(), asked)


if __name__ == "__main__":
    unittest.main()
