"""The language of the desktop tests: programs, windows, the tray, notifications, controls, secrets.

    app = desk.start("build/release/notewick")
    desk.tray.item(app).choose("Log work now")
    panel = desk.controls.of(app)
    panel.find("What did you do?").write("Called the school")
    panel.find("Send").click()
    assert desk.notifications.wait_for("Captured — Tobias Hargreave").app == "Notewick"

Tests of the product beside the local service begin with desk.story.Story.

It needs a session around it: tests/desktop/session, or tests/desktop/sway-session for Wayland.
Everything that waits gives up after a limit, with a message that says for what it waited.
"""

from desk import controls, keyring, notifications, screen, tray, windows
from desk.programs import Program, close_all, mousepad, start, xterm, zenity
from desk.waiting import TimedOut, wait_until

__all__ = [
    "Program",
    "TimedOut",
    "close_all",
    "controls",
    "keyring",
    "mousepad",
    "notifications",
    "screen",
    "start",
    "tray",
    "wait_until",
    "windows",
    "xterm",
    "zenity",
]
