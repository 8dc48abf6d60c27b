"""The product as its user meets it: a home folder, the program, its panels."""

import json
import os
import re
from pathlib import Path

from desk import controls, keyring, local_service, programs, tray, windows
from desk.waiting import LIMIT, TimedOut, wait_until

PROGRAM = os.environ.get("NOTEWICK", "")
DOCTOR = os.environ.get("NOTEWICK_DOCTOR", "")
SECRET = {"service": "tools.velk.notewick", "account": "refresh-token"}
QUICK_NOTE = "VELK — quick note"
SIGN_IN = "Sign in to VELK"

_BROWSER = '#!/bin/sh\nprintf "%s\\n" "$1" >>"$HOME/opened-addresses"\n'


class Home:
    """A home folder of its own, and what the program keeps there."""

    def __init__(self, folder):
        self.folder = Path(folder)
        self.configuration = self.folder / ".config"
        self.settings = self.configuration / "VELK" / "Notewick.ini"
        self.support = self.folder / "Library" / "Application Support" / "VELKNotewick"
        self._tools = self.folder / "bin"
        self._tools.mkdir(parents=True)
        browser = self._tools / "xdg-open"
        browser.write_text(_BROWSER)
        browser.chmod(0o755)

    @property
    def environment(self):
        return {
            "HOME": str(self.folder),
            "XDG_CONFIG_HOME": str(self.configuration),
            "XDG_DATA_HOME": str(self.folder / ".local" / "share"),
            "XDG_CACHE_HOME": str(self.folder / ".cache"),
            "PATH": f"{self._tools}:{os.environ['PATH']}",
        }

    def point_at(self, origin):
        """Makes this the address of the service."""
        self.settings.parent.mkdir(parents=True)
        self.settings.write_text(f"[General]\nVELKBaseURL={origin}\n")

    def text(self, name):
        """A file of the program's folder; a missing one reads as empty."""
        path = self.support / name
        return path.read_text("utf-8") if path.exists() else ""

    def list(self, name):
        return json.loads((self.support / name).read_bytes())

    def waiting_note(self, number, **other):
        """A note about the first participant as the outbox keeps it; `other` replaces some of its values."""
        person = self.list("participants.json")[0]
        return {
            "id": f"0A1B2C3D-0000-4000-8000-{number:012}",
            "participantId": person["id"],
            "participantName": f"{person['first_name']} {person['last_name']}",
            "input": f"Note {number}",
            "minutes": 15,
            "sessionDate": "2026-03-05",
            "attempts": 0,
            **other,
        }

    @staticmethod
    def caught_work(number, participant, **other):
        """Work on a participant as the list of pending items keeps it; `other` replaces some of its values."""
        return {
            "id": f"0A1B2C3D-0000-4000-8000-{number:012}",
            "participant": participant,
            "day": "2026-03-05",
            "firstSeen": 794000000,
            "lastSeen": 794000600,
            "observedMinutes": 10,
            "evidence": [participant],
            **other,
        }

    def leave_caught(self, work):
        (self.support / "pending.json").write_text(json.dumps(work))

    def leave_in_outbox(self, notes):
        (self.support / "outbox.json").write_text(json.dumps(notes))

    def watch_log(self):
        return self.text("watch.log").splitlines()

    def opened_addresses(self):
        path = self.folder / "opened-addresses"
        return path.read_text().splitlines() if path.exists() else []

    def files_with(self, word):
        """Every file below the home folder that holds this word."""
        files = (f for f in self.folder.rglob("*") if f.is_file())
        return [f for f in files if word.encode() in f.read_bytes()]

    def words_like_tokens(self):
        """Whatever in these files could be 32 random bytes, in hexadecimal or in base 64."""
        files = (f.read_bytes() for f in self.folder.rglob("*") if f.is_file())
        return [word for content in files for word in re.findall(rb"[0-9A-Za-z_+/-]{43,}", content)]


class Panel:
    """A panel of the program: its window, and its controls."""

    def __init__(self, program, title):
        self._program = program
        self._title = title

    @property
    def window(self):
        return windows.wait_for(self._title, pid=self._program.pid)

    @property
    def shown(self):
        return windows.find(self._title, pid=self._program.pid) is not None

    def wait_until_gone(self):
        windows.wait_until_gone(self._title, pid=self._program.pid)

    @property
    def panel(self):
        return controls.of(self._program).find(self._title, "dialog")


class Widget(Panel):
    @property
    def note(self):
        return self.panel.find("What did you do?", "text")

    @property
    def participant(self):
        return self.panel.find("Participant", "combo box")

    def fill(self, text, minutes):
        panel = self.panel
        panel.find("What did you do?", "text").write(text)
        panel.find(str(minutes), "radio button").click()
        wait_until(lambda: panel.find(str(minutes), "radio button").checked, what=f"{minutes} being chosen")

    def send(self):
        self.panel.find("Send to VELK", "push button").click()

    def write_note(self, text, minutes=15):
        """Fills the form and sends it; returns when the form is empty again."""
        self.fill(text, minutes)
        self.send()
        self.note.wait_for_text("")

    def caught(self):
        """The rows of caught work, top to bottom."""
        names = (button.name for button in self.panel.all(role="push button"))
        return [name.removeprefix("Log ") for name in names if name.startswith("Log ")]

    def log(self, row):
        self.panel.find(f"Log {row}", "push button").click()


class SignInPanel(Panel):
    def sign_in(self, email=local_service.EMAIL, password=local_service.PASSWORD):
        panel = self.panel
        panel.find("Email", "text").write(email)
        panel.find("Password", "text").write(password)
        panel.find("Sign in", "push button").click()


class Notewick(programs.Program):
    """The running program."""

    def __init__(self, *arguments, environment):
        super().__init__([PROGRAM, *arguments], environment)
        self.widget = Widget(self, QUICK_NOTE)
        self.sign_in_panel = SignInPanel(self, SIGN_IN)

    @property
    def tray(self):
        return tray.item(self)

    def menu(self):
        return self.tray.labels()

    def has(self, label):
        return label in self.menu()

    def wait_for_menu(self, labels, timeout=LIMIT):
        """Waits until the menu reads so, top to bottom."""
        try:
            wait_until(lambda: self.menu() == labels, timeout, "the menu")
        except TimedOut as late:
            raise AssertionError(f"the menu is {self.menu()}, not {labels}") from late

    def wait_for_entry(self, label, timeout=LIMIT):
        wait_until(lambda: self.has(label), timeout, f"the menu entry {label!r}")

    def choose(self, label):
        self.tray.choose(label)

    def send_what_waits(self):
        """Chooses "Retry now" unless the program's own timer is faster; returns when nothing waits."""

        def is_sent():
            if entry := self.tray.entry("Retry now"):
                self.tray.click(entry)
            return not self.has("Retry now")

        wait_until(is_sent, what="an empty outbox")

    def sign_in(self):
        self.sign_in_panel.sign_in()
        self.sign_in_panel.wait_until_gone()
        self.widget.window  # it comes with the participants

    def quit(self):
        """Ends it by its menu; returns the exit code."""
        self.choose("Quit VELK Notewick")
        return self.wait()

    def kill(self):
        self._process.kill()
        self._process.wait()
        self.close()


def stored_token():
    """The refresh token in the open secret store, or None."""
    return keyring.lookup(**SECRET)


def menu(account, work, outbox=(), widget="Hide", watching="Pause", signed_in=True):
    """The whole menu, as a user reads it, "-" for a separator."""
    return [
        *account,
        "-",
        *work,
        *(["-", *outbox, "Retry now"] if outbox else []),
        "-",
        "Log work now (call, visit…)",
        f"{widget} floating widget",
        "Open my case notes in VELK",
        "-",
        f"{watching} watching",
        "Reload participants",
        "Start at login",
        *(["Sign out of VELK"] if signed_in else []),
        "-",
        "Quit VELK Notewick",
    ]


NO_WORK = ["No unlogged work spotted"]
WATCHING = [f"Signed in as {local_service.EMAIL}", "Watching · 12 participants"]
SIGNED_OUT = ["Sign in to VELK…"]
