#!/usr/bin/python3
"""How much the program has to say on the session bus while notes leave it."""

import signal
import unittest

import desk
from desk.bus_traffic import BusTraffic
from desk.story import Story

NOTES = 20
AT_MOST_PER_NOTE = 12


class ADrain(Story):
    def start_with_notes_waiting(self):
        """The service is silent; signal SIGCONT lets the notes go."""
        self.assertEqual(self.start_signed_in().quit(), 0)
        self.home.leave_in_outbox([self.home.waiting_note(number) for number in range(NOTES)])
        self.service.signal(signal.SIGSTOP)
        self.addCleanup(self.service.signal, signal.SIGCONT)
        program = self.start()
        program.wait_for_entry(f"{NOTES} notes waiting to send to VELK")
        return program

    def test_costs_few_messages_a_note(self):
        program = self.start_with_notes_waiting()
        with BusTraffic() as traffic:
            self.service.signal(signal.SIGCONT)
            desk.wait_until(lambda: self.home.list("outbox.json") == [], what="the end of the outbox")
            desk.wait_until(
                lambda: str(program.tray.read("ToolTip")[2]).startswith("VELK —"), what="no count"
            )
        counted = traffic.count_of(program)
        print(f"{counted.total() / NOTES:.1f} messages a note")
        self.assertEqual(len(self.service.inputs()), NOTES)
        self.assertIn("Notify", counted)
        self.assertLessEqual(counted.total(), NOTES * AT_MOST_PER_NOTE, counted.most_common())


if __name__ == "__main__":
    unittest.main()
