"""A user who is signed in: what the benchmarks start the program with."""

import json
import tempfile
from pathlib import Path

from benchmarks import notification_server
from desk.local_service import LocalService
from desk.notewick import Home, Notewick

DAY = "2026-03-05"


class SignedIn:
    """A home folder, a service and a stored token: what a user has from the second start on."""

    def __init__(self, clock=None):
        notification_server.start()
        self._clock = clock or {}
        self.folder = Path(tempfile.mkdtemp())
        self.service = LocalService(self.folder, self._clock)
        self.home = Home(self.folder / "home")
        self.home.point_at(self.service.origin)
        program = self.start()
        program.sign_in()
        program.quit()

    def start(self, disk=None):
        """Starts the program; what it writes is counted if a DiskCount is given."""
        counted = disk.environment if disk else {}
        trust = {"SSL_CERT_FILE": self.service.authority}
        return Notewick(environment={**self.home.environment, **self._clock, **trust, **counted})

    def put_notes(self, count):
        """Leaves so many notes in the outbox, and nothing of earlier rounds anywhere."""
        self.service.forget()
        for log in self.home.support.glob("captures-*.log"):
            log.unlink()
        [participant, *_] = self.home.list("participants.json")
        notes = [_note(number, participant) for number in range(count)]
        (self.home.support / "outbox.json").write_text(json.dumps(notes))


def _note(number, participant):
    return {
        "id": f"0A1B2C3D-0000-4000-8000-{number:012}",
        "participantId": participant["id"],
        "participantName": f"{participant['first_name']} {participant['last_name']}",
        "input": f"Note {number}: called the housing office about the application",
        "minutes": 15,
        "sessionDate": DAY,
        "attempts": 0,
    }
