"""A user who is signed in: what the benchmarks start the program with."""

import json
import ssl
import subprocess
import tempfile
import urllib.request
from pathlib import Path

import desk
from benchmarks import notification_server
from desk import screen
from desk.local_service import EMAIL, LOGIN, PASSWORD, LocalService
from desk.notewick import SECRET, Home, Notewick

WATCHING = "Watching · 12 participants"


class User:
    """A home folder and a service: what a user has at the first start."""

    def __init__(self, clock=None):
        notification_server.start()
        self._clock = clock or {}
        self.folder = Path(tempfile.mkdtemp())
        self.service = LocalService(self.folder, self._clock)
        self.home = Home(self.folder / "home")
        self.home.point_at(self.service.origin)

    def log_in(self):
        """The tokens that the service gives for the password."""
        trust = ssl.create_default_context(cafile=self.service.authority)
        form = json.dumps({"email": EMAIL, "password": PASSWORD}).encode()
        with urllib.request.urlopen(self.service.origin + LOGIN, form, context=trust, timeout=10) as answer:
            return json.load(answer)

    def start(self, disk=None):
        """Starts the program; what it writes is counted if a DiskCount is given."""
        counted = disk.environment if disk else {}
        trust = {"SSL_CERT_FILE": self.service.authority}
        return Notewick(environment={**self.home.environment, **self._clock, **trust, **counted})


def sign_in_with_keyboard(program):
    """On the panel of the first start, because no accessibility is switched on."""
    desk.wait_until(lambda: program.sign_in_panel.window.is_active, what="the sign-in panel")
    screen.type_text(EMAIL)
    screen.press("Tab")
    screen.type_text(PASSWORD)
    screen.press("Return")
    program.wait_for_entry(WATCHING)


class SignedIn(User):
    """With a stored token: what a user has from the second start on."""

    def __init__(self):
        super().__init__()
        self._store_token()
        program = self.start()
        program.wait_for_entry(WATCHING)
        program.quit()

    def _store_token(self):
        """What signing in leaves behind."""
        command = ["secret-tool", "store", "--label", "Notewick"]
        attributes = [word for pair in SECRET.items() for word in pair]
        subprocess.run([*command, *attributes], input=self.log_in()["refreshToken"], text=True, check=True)
        with self.home.settings.open("a") as settings:
            settings.write(f"VELKUserEmail={EMAIL}\n")

    def put_notes(self, count):
        """Leaves so many notes in the outbox, and nothing of earlier rounds anywhere."""
        self.service.forget()
        for log in self.home.support.glob("captures-*.log"):
            log.unlink()
        said = "called the housing office about the application"
        notes = [self.home.waiting_note(number, input=f"Note {number}: {said}") for number in range(count)]
        self.home.leave_in_outbox(notes)
