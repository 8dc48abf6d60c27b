"""A notification server that shows few notifications at a time, as most desktops' do."""

import tempfile
from pathlib import Path

import dbus
import desk

_NAME = "org.freedesktop.Notifications"
_CONFIGURATION = """\
[global]
notification_limit = 3
history_length = 3
sort = no
[urgency_low]
timeout = 1
[urgency_normal]
timeout = 1
"""


def start():
    """Starts one where the session has none. The session's own shows every one, and hangs at a thousand."""
    bus = dbus.SessionBus()
    if bus.name_has_owner(_NAME):
        return
    path = Path(tempfile.mkstemp(prefix="dunst-")[1])
    path.write_text(_CONFIGURATION)
    desk.start("dunst", "-conf", path)
    desk.wait_until(lambda: bus.name_has_owner(_NAME), what="the notification server")
