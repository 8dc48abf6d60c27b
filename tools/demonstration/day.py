#!/usr/bin/python3
"""The demonstration: one note from a window's title to the service's page. Runs in a private desktop.

    day.py FOLDER    pictures go there
"""

import json
import os
import signal
import subprocess
import sys
import tempfile
from datetime import datetime
from pathlib import Path

import desk
from browser import Browser
from desk import notewick, notifications, screen, tray
from desk.fast_time import FastTime
from desk.local_service import CAPTURE, EMAIL, PASSWORD, LocalService
from transcript import Transcript

PERSON, OTHER = "Lena O'Keefe", "Amara Osei"
NOTE = "Went through next week's support hours; she prefers Tuesdays."
MINUTES = 30
SAMPLES = {PERSON: 25, OTHER: 45}  # of each piece of work: about six and eleven minutes

MAIL = f"""\
From:    {PERSON}
Subject: RE: support hours

Hello Dana,

Tuesday and Thursday mornings suit me best next week.
Could you ask whether the bus pass can start on Monday?

Lena
"""
PLAN = """\
Plan review, second quarter

- Goals from March: two met, one moved to June
- Next home visit: Wednesday
- Ask about the school's after-care places
"""

# An xterm that shows a text under a title.
SHOW_IN_TERMINAL = 'printf "\\033]2;%s\\007\\033[?25l\\n%s" "$0" "$1"; exec sleep infinity'
SCALE = int(os.environ.get("GDK_SCALE", 1))
TERMINAL_LOOK = [
    *("-fa", "DejaVu Sans Mono", "-fs", "11", "-b", f"{12 * SCALE}"),
    *("-geometry", f"60x14+{40 * SCALE}+{60 * SCALE}"),
    *("-bg", "#fdfdfb", "-fg", "#23272b"),
]


class Day:
    def __init__(self, folder, pictures):
        self.folder = folder
        self.pictures = pictures
        self.day = f"{datetime.now():%Y-%m-%d}"
        self.clock = FastTime(start=f"{self.day} 09:00:00")
        self.home = notewick.Home(folder / "home")
        self.transcript = Transcript(self.clock, self.home)
        self.say = self.transcript.say

    def play(self):
        self.start()
        self.sign_in()
        self.work(PERSON, self.read_mail)
        self.work(OTHER, self.review_plan)
        self.have_lunch()
        self.look_at_caught_work()
        self.write_note()
        self.read_it_in_browser()
        return self.note_is_in_database()

    def start(self):
        served = self.folder / "service"
        served.mkdir()
        self.service = LocalService(served, self.clock.environment)
        self.say(f"The service listens at {self.service.origin}; its database is empty.")
        self.home.point_at(self.service.origin)
        self.browser = Browser(self.home, self.service.authority)
        trust = {"SSL_CERT_FILE": self.service.authority}
        self.app = notewick.Notewick(environment={**self.home.environment, **self.clock.environment, **trust})
        desk.wait_until(lambda: self.app.tray, what="the tray item")
        self.say("Notewick is in the tray.")

    def sign_in(self):
        desk.wait_until(lambda: self.app.sign_in_panel.window.is_active, what="the sign-in panel")
        self.picture("sign-in", self.app.sign_in_panel.window)
        self.say(f"Signing in as {EMAIL}.")
        screen.type_text(EMAIL)
        screen.press("Tab")
        screen.type_text(PASSWORD)
        screen.press("Return")
        desk.wait_until(lambda: self.app.has("Watching · 12 participants"), what="being signed in")
        desk.wait_until(lambda: self.app.widget.shown, what="the widget")
        self.tell_notifications()
        notifications.clear()

    def read_mail(self):
        return self.terminal(f"RE: support hours — {PERSON}", MAIL), "An e-mail is opened"

    def review_plan(self):
        settings = Path(os.environ["XDG_CONFIG_HOME"], "glib-2.0", "settings", "keyfile")
        settings.parent.mkdir(parents=True)
        settings.write_text("[org/xfce/mousepad/preferences/window]\npath-in-title=false\n")
        plan = self.folder / f"{OTHER} plan review.txt"
        plan.write_text(PLAN)
        editor = desk.start(
            "mousepad", "--disable-server", plan, environment={"GSETTINGS_BACKEND": "keyfile"}
        )
        return editor, "A document is opened in an editor"

    @staticmethod
    def terminal(title, text):
        program = desk.start("xterm", "-u8", *TERMINAL_LOOK, "-e", "sh", "-c", SHOW_IN_TERMINAL, title, text)
        program.window(title)
        return program

    def bring_to_front(self, program, told):
        window = program.window()
        window.focus()
        self.say(f"{told}: {window.title}")

    def work(self, name, open_it):
        """Has a program with this name in its title in front until it was seen often enough, then closes it."""
        program, told = open_it()
        self.bring_to_front(program, told)
        seen = f'matches=["{name}"]'
        desk.wait_until(
            lambda: sum(line.endswith(seen) for line in self.home.watch_log()) >= SAMPLES[name],
            what=f"sightings of {name}",
        )
        self.say("It is put away.")
        program.close()

    def have_lunch(self):
        lunch = self.terminal("Lunch menu", "Today: leek soup\n")
        self.bring_to_front(lunch, "Ten minutes of something else")
        desk.wait_until(lambda: len(self.pendings()) == 2, what="the end of the sessions")
        lunch.close()
        for pending in self.pendings():
            name, minutes = pending["participant"], pending["observedMinutes"]
            self.say(f"The session has ended; caught: {name}, ~{minutes} min, {pending['evidence']}")

    def pendings(self):
        path = self.home.support / "pending.json"
        return json.loads(path.read_text()) if path.exists() else []

    def look_at_caught_work(self):
        self.bring_to_front(*self.read_mail())
        [minutes] = [p["observedMinutes"] for p in self.pendings() if p["participant"] == PERSON]
        self.row = f"{PERSON} · ~{minutes}m · {self.day}"
        desk.wait_until(lambda: notifications.count_displayed() >= 2, what="the notifications")
        desk.wait_until(lambda: self.row in self.app.widget.caught(), what="the caught item in the widget")
        self.picture("widget", self.app.widget.window)
        self.picture("notification", notifications.place())
        place = tray.open_menu()
        self.picture("desktop")
        self.picture("tray-menu", place)
        screen.press("Escape")
        self.tell_notifications()

    def tell_notifications(self):
        for shown in notifications.everything():
            self.say(f"Notification: {shown.summary} / {shown.body}")

    def write_note(self):
        widget = self.app.widget
        widget.log(self.row)
        desk.wait_until(lambda: widget.note.focused, what="the note having the keyboard")
        self.say(f"The caught item is chosen in the widget; the note: {NOTE}")
        screen.type_text(NOTE)
        widget.note.wait_for_text(NOTE)
        widget.panel.find(str(MINUTES), "radio button").click()
        self.picture("widget-note", widget.window)
        notifications.clear()
        widget.send()
        widget.note.wait_for_text("")
        self.say("Sent.")
        desk.wait_until(lambda: NOTE in self.service.inputs(), what="the note in the service")
        request = self.service.requests(CAPTURE)[-1]
        self.say(f"The service has taken it: POST {CAPTURE} {request['body']}")
        desk.wait_until(lambda: notifications.count_displayed(), what="the notification of the capture")
        self.tell_notifications()

    def read_it_in_browser(self):
        self.app.choose("Open my case notes in VELK")
        self.say("Opening the case notes in a browser, and signing in there.")
        self.browser.sign_in(EMAIL, PASSWORD)
        page = self.browser.page("Case notes – VELK")
        self.browser.wait_for_text(NOTE)
        screen.wait_until_still()
        self.picture("case-notes", page)

    def note_is_in_database(self):
        """Asks the file itself, when service and program have ended."""
        self.app.quit()
        self.service.stop()
        self.say("Notewick and the service have ended.")
        columns = "first_name || ' ' || last_name AS person, minutes, session_date, input"
        database = self.folder / "service" / "notes.db"
        question = ["sqlite3", "-readonly", "-json", database, f"SELECT {columns} FROM notes"]
        answer = subprocess.run(question, capture_output=True, text=True, check=True).stdout.strip() or "[]"
        self.say(f"The database holds: {answer}")
        return {"person": PERSON, "minutes": MINUTES, "session_date": self.day, "input": NOTE} in json.loads(
            answer
        )

    def picture(self, name, of=None):
        """Of the whole screen, or of a window or a place on it."""
        path = self.pictures / f"{name}.png"
        screen.shot(path)
        if place := getattr(of, "geometry", of):
            cut = f"{place.width}x{place.height}+{place.x}+{place.y}"
            subprocess.run(["mogrify", "-crop", cut, "+repage", path], check=True)
        self.say(f"Picture: {path}")


def main():
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    subprocess.run(["xsetroot", "-solid", "#3d5a62"], check=True)
    try:
        done = Day(Path(tempfile.mkdtemp()), Path(sys.argv[1])).play()
    finally:
        desk.close_all()
    print("The note is in the database." if done else "The note is NOT in the database.")
    return 0 if done else 1


if __name__ == "__main__":
    sys.exit(main())
