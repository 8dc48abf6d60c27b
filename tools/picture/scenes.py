"""Leads the program through its states and takes a picture of each; runs in a private desktop.

    scenes.py LOOK FOLDER
"""

import collections
import itertools
import pathlib
import subprocess
import sys
import tempfile

import desk
from desk import notewick, notifications, screen, tray
from desk.local_service import CAPTURE, LOGIN, LocalService
from looks import LOOKS

LONG_NOTE = (
    "Went through next week's support hours with her and with the bus company; she prefers Tuesdays. "
    "The pass starts on Monday. Asked about the after-care places at the school, will call back on Friday."
)
MARGIN = 12  # pixels around a panel, so that its frame is seen
ROWS = 6


def settle():
    """Waits until the screen looks as it did a moment ago; a caret goes on blinking."""
    last = collections.deque(maxlen=3)

    def is_known():
        now = subprocess.run(["import", "-window", "root", "rgb:-"], capture_output=True, check=True).stdout
        known = now in last
        last.append(now)
        return known

    desk.wait_until(is_known, timeout=90, what="the end of all drawing")


class Scenes:
    def __init__(self, look, folder):
        self.look = LOOKS[look]
        self.folder = folder
        self.place = pathlib.Path(tempfile.mkdtemp())
        self.service = LocalService(self.place, participants=self.look.people)
        self.home = notewick.Home(self.place / "home")
        self.home.point_at(self.service.origin)
        self.home.configuration.mkdir(parents=True, exist_ok=True)
        (self.home.configuration / "kdeglobals").write_text(self.look.plasma_settings())

    def start(self):
        trust = {"SSL_CERT_FILE": self.service.authority}
        self.app = notewick.Notewick(environment={**self.home.environment, **trust, **self.look.environment})

    def play(self):
        if self.look.wants_dark:
            desk.start(sys.executable, pathlib.Path(__file__).with_name("portal.py")).wait_for_output("ready")
        if self.look.has_two_screens:
            screen.split(2560, 1200)
        self.start()
        self.sign_in()
        self.widget()
        if self.look.has_two_screens:
            return self.two_screens()
        if "--keyring" in self.look.session:
            return  # nobody is signed in after the next start
        self.caught_work()
        self.notifications()
        self.waiting_notes()

    def sign_in(self):
        panel = self.app.sign_in_panel
        desk.wait_until(lambda: panel.window.is_active, what="the sign-in panel")
        self.picture("sign-in", panel.window)
        self.menu("menu-signed-out")
        panel.sign_in(password="wrong")
        panel.panel.find(role="notification")
        self.picture("sign-in-error", panel.window)
        panel.window.focus()
        screen.press("Tab", "Tab")
        self.picture("sign-in-button-focused", panel.window)
        self.service.fail(LOGIN, delay=3, times=1)
        panel.sign_in()
        desk.wait_until(lambda: not panel.panel.find("Sign in", "push button").enabled, what="its being busy")
        self.picture("sign-in-busy", panel.window, still=False)
        panel.wait_until_gone()

    def widget(self):
        widget = self.app.widget
        self.picture("widget", widget.window)
        widget.fill(LONG_NOTE, 30)
        self.picture("widget-long-note", widget.window)
        widget.note.write("")
        widget.send()
        widget.panel.find(role="notification")
        self.picture("widget-refusal", widget.window, still=False)

    def two_screens(self):
        """The widget on the one screen, on the other, which has a scale of its own, and when that is unplugged."""
        window = self.app.widget.window
        for name, left in {"left": 400, "right": 1500}.items():
            window.move(left, 300)
            self.picture(f"screens-{name}")
        screen.unplug("RIGHT")
        self.picture("screens-unplugged")

    def caught_work(self):
        """Work that was caught by an earlier run, more than the rows show."""
        self.app.close()
        self.leave_pendings()
        self.start()
        widget = self.app.widget
        desk.wait_until(lambda: len(widget.caught()) == 4, what="the rows")
        widget.window.focus()
        self.picture("widget-rows", widget.window)
        self.menu("menu-caught")
        widget.window.focus()
        for name in ("minutes", "send", "log", "skip"):
            screen.press("Tab")
            self.picture(f"widget-focus-{name}", widget.window)
        for name in ("log-2", "skip-2", "log-3", "skip-3", "log-4", "skip-4", "chooser"):
            screen.press("Tab")
        self.picture(f"widget-focus-{name}", widget.window)
        widget.participant.press()
        self.picture("widget-chooser")
        screen.press("Escape")

    def leave_pendings(self):
        names = itertools.islice(itertools.cycle(self.look.people), ROWS)
        self.home.leave_caught(
            [
                self.home.caught_work(number, name, observedMinutes=7 + number)
                for number, name in enumerate(names)
            ]
        )

    def notifications(self):
        self.picture("notifications", notifications.place())

    def waiting_notes(self):
        self.service.fail(CAPTURE, status=503)
        widget = self.app.widget
        widget.write_note("Called about rent")
        widget.panel.find(role="notification")
        self.picture("widget-queued", widget.window, still=False)
        self.menu("menu-waiting-notes")

    def menu(self, name):
        if not tray.has_host():
            return
        subprocess.run(
            ["xdotool", "mousemove", "--sync", "5", "400"], check=True
        )  # a tool tip would be taken for the menu
        settle()
        place = tray.open_menu()
        self.picture(name, place)
        screen.press("Escape")
        settle()

    def picture(self, name, of=None, still=True):
        """Of the whole screen, or of a window or a place on it."""
        if still:
            settle()
        path = self.folder / f"{name}.png"
        screen.shot(path)
        place = getattr(of, "geometry", of)
        if place:
            cut = f"{place.width + 2 * MARGIN}x{place.height + 3 * MARGIN}"
            corner = f"+{max(0, place.x - MARGIN)}+{max(0, place.y - 2 * MARGIN)}"
            subprocess.run(["mogrify", "-crop", cut + corner, "+repage", path], check=True)


def main():
    look, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    if LOOKS[look].dots_per_inch != 96:
        resolution = f"Xft.dpi: {LOOKS[look].dots_per_inch}"
        subprocess.run(["xrdb", "-merge", "-"], input=resolution, text=True, check=True)
    try:
        Scenes(look, folder).play()
    finally:
        desk.close_all()


if __name__ == "__main__":
    main()
