"""The screen as a whole: pictures of it, keys and the mouse."""

import os
import subprocess

from desk.waiting import wait_until

IN_SWAY = "SWAYSOCK" in os.environ


def _run(*arguments):
    subprocess.run([str(a) for a in arguments], check=True, capture_output=True, timeout=20)


def shot(path):
    """Writes a picture of the whole X screen."""
    _run("import", "-window", "root", path)


def split(width, height):
    """Makes two of the X screen of this size: LEFT and RIGHT, each half as wide."""
    half = f"{width // 2}/{width * 127 // 960}x{height}/{height * 127 // 480}"  # at 96 dpi, in millimetres
    _run("xrandr", "--setmonitor", "LEFT", f"{half}+0+0", "screen")
    _run("xrandr", "--setmonitor", "RIGHT", f"{half}+{width // 2}+0", "none")


def unplug(name):
    """Takes LEFT or RIGHT away again; without the two the screen is one."""
    _run("xrandr", "--delmonitor", name)


def wait_until_still():
    """Waits until two pictures in a row are the same: what is to be drawn has been drawn. On X only."""
    last = None

    def same_as_before():
        nonlocal last
        before, last = last, subprocess.check_output(["import", "-window", "root", "rgb:-"], timeout=20)
        return last == before

    wait_until(same_as_before, what="the end of all drawing")


def type_text(text):
    """Keystrokes to the window that has the keyboard; ASCII only, the session's keyboard has no more."""
    if not text.isascii():
        raise ValueError(f"not on the keyboard: {text!r}")
    if IN_SWAY:
        _run("wtype", "--", text)
    else:
        _run("xdotool", "type", "--", text)


def press(*chords):
    """Keys by their X names: press("ctrl+a", "BackSpace"). On X only."""
    for chord in chords:
        _run("xdotool", "key", chord)


def click(x, y, button=1):
    """A real click of the mouse; on X only, sway's seat has no mouse. Button 1 is left, 2 middle, 3 right."""
    _run("xdotool", "mousemove", "--sync", x, y, "click", button)
