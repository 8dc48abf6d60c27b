#!/usr/bin/python3
"""The real program under a service that answers in every odd way: small, responsive, and as before afterwards."""

import unittest

import desk
from odd_service import ODD, OddService
from watched import Watch, resident
from desk.story import Story

MOST_MEMORY = 100  # MB
MOST_KEPT = 5  # MB
LONGEST_AWAY = 0.12  # seconds


class OddAnswers(Story):
    def test_cost_little_and_change_nothing(self):
        service = OddService()
        self.home.settings.unlink()
        self.home.settings.parent.rmdir()
        self.home.point_at(service.origin)
        program = self.start_signed_in()
        before, slowest = resident(program.pid), None
        with Watch(program) as watch:
            for odd in ODD:
                service.answer, before_it = odd, watch.longest
                self.reload(program, service)
                slowest = odd if watch.longest > before_it else slowest
            service.answer = None
            self.reload(program, service)
            program.wait_for_entry("Watching · 1 participants")
        program.widget.write_note("All is well")
        desk.wait_until(lambda: service.notes == ["All is well"], what="the note")
        print(
            f"{len(set(ODD))} answers; memory {before:.1f} MB before, {watch.most:.1f} at most, "
            f"{resident(program.pid):.1f} afterwards; {watch.longest * 1000:.0f} ms away at most, {watch.questions} questions"
        )
        self.assertLessEqual(watch.most, MOST_MEMORY)
        self.assertLessEqual(watch.longest, LONGEST_AWAY, f"under {slowest!r:.200}")
        self.assertGreater(watch.questions, len(ODD), "asked too seldom to see anything")
        desk.wait_until(
            lambda: resident(program.pid) <= before + MOST_KEPT, what="the memory being given back"
        )
        self.assertEqual(program.quit(), 0)

    @staticmethod
    def reload(program, service):
        done = service.answered
        program.choose("Reload participants")
        desk.wait_until(lambda: service.answered > done, what="the question for participants")


if __name__ == "__main__":
    unittest.main()
