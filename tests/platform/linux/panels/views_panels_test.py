"""The panels as a window manager, a keyboard and a screen reader meet them."""

import itertools
import math
import os
import re
import subprocess
import unittest
from pathlib import Path

import desk
from desk import screen, wait_until
from shown_views import ShownViews

SCREEN_WIDTH, SCREEN_HEIGHT = 1280, 800
START_OF_A_DRAG = 16  # pixels that the mouse moves before a window follows
SETTINGS = Path(os.environ["XDG_CONFIG_HOME"], "VELK", "Notewick.ini")
STATES = {"ABOVE", "SKIP_TASKBAR", "SKIP_PAGER"}


def frame_of(window):
    """left, top, right and bottom of the window with its title bar and borders."""
    printed = subprocess.run(
        ["xprop", "-notype", "-id", window.number, "_NET_FRAME_EXTENTS"],
        capture_output=True,
        text=True,
        check=True,
    ).stdout
    left, right, top, bottom = (int(n) for n in re.findall(r"\d+", printed.partition("=")[2]))
    inner = window.geometry
    return (inner.x - left, inner.y - top, inner.x + inner.width + right, inner.y + inner.height + bottom)


def is_saved(frame):
    left, top, right, bottom = frame
    saved = f"VELKQuickWidget={left} {top} {right - left} {bottom - top}\n"
    return saved in SETTINGS.read_text()


def move_mouse(left, top, *more):
    subprocess.run(["xdotool", "mousemove", "--sync", str(left), str(top), *more], check=True)


def drag(window, start, way):
    """Presses the left button at a place, goes on a little until the window follows, then all the way."""
    frame = frame_of(window)
    little = itertools.cycle((START_OF_A_DRAG - 1, START_OF_A_DRAG))

    def follows():
        step = next(little)
        move_mouse(*(s + int(math.copysign(step, w)) for s, w in zip(start, way)))
        return frame_of(window) != frame

    move_mouse(*start, "mousedown", "1")
    wait_until(follows, what="the window following the mouse")
    move_mouse(*(s + w for s, w in zip(start, way)), "mouseup", "1")


def save_frame(*frame):
    SETTINGS.parent.mkdir(parents=True, exist_ok=True)
    SETTINGS.write_text(f"[General]\nVELKQuickWidget={' '.join(map(str, frame))}\n")


class TheQuickNotePanel(unittest.TestCase):
    def setUp(self):
        self.addCleanup(desk.close_all)
        self.addCleanup(SETTINGS.unlink, missing_ok=True)

    def wait_for_corner(self, window, right=SCREEN_WIDTH - 24, bottom=SCREEN_HEIGHT - 24):
        wait_until(lambda: frame_of(window)[2:] == (right, bottom), what=f"the corner {right}, {bottom}")

    def wait_until_it_floats(self, window):
        wait_until(lambda: STATES <= window.states and window.is_on_all_desktops, what="a floating window")

    def split_the_screen(self):
        self.addCleanup(screen.unplug, "LEFT")
        screen.split(SCREEN_WIDTH, SCREEN_HEIGHT)

    def test_floats_alone_and_leaves_the_keyboard_where_it_is_each_time_it_is_shown(self):
        work = desk.xterm("the user's work").window()
        work.focus()
        views = ShownViews("--quick")
        for _ in range(3):
            window = views.window()
            self.wait_until_it_floats(window)
            self.assertIn("UTILITY", window.types)
            wait_until(lambda: not window.is_transient, what="a window tied to no other")
            self.assertTrue(work.is_active)
            views.do("hide")
            views.do("show")

    def test_takes_the_keyboard_when_it_is_asked_to_hidden_or_not(self):
        work = desk.xterm("the user's work").window()
        views = ShownViews("--quick")
        for command in ("show", "hide"):
            views.window()
            work.focus()
            views.do(command)
            views.do("key")
            wait_until(lambda: views.window().is_active, what="the panel being active")

    def test_stands_in_the_bottom_right_corner_and_stays_there_when_it_grows(self):
        views = ShownViews("--quick")
        window = views.window()
        self.wait_for_corner(window)
        height = window.geometry.height
        views.do("rows 6")
        wait_until(lambda: window.geometry.height > height + 80, what="a taller panel")
        self.wait_for_corner(window)
        views.do("rows 0")
        wait_until(lambda: window.geometry.height == height, what="the old height")
        self.wait_for_corner(window)

    def test_moves_by_its_background_and_comes_back_there(self):
        views = ShownViews("--quick")
        window = views.window()
        self.wait_for_corner(window)
        left, top, _, _ = frame_of(window)
        inner = window.geometry
        drag(window, (inner.x + inner.width - 5, inner.y + inner.height - 5), (-300, -200))
        wait_until(lambda: is_saved(frame_of(window)), what="the saved place")
        place = frame_of(window)
        self.assertAlmostEqual(place[0], left - 300, delta=START_OF_A_DRAG)
        self.assertAlmostEqual(place[1], top - 200, delta=START_OF_A_DRAG)
        views.close()
        again = ShownViews("--quick").window()
        wait_until(lambda: frame_of(again) == place, what="the place of the last time")

    def test_keeps_a_move_in_one_step_after_it_was_hidden(self):
        views = ShownViews("--quick")
        window = views.window()
        self.wait_for_corner(window)
        for place in ((300, 200), (500, 100)):
            views.do("hide")
            views.do("show")
            window = views.window()
            self.wait_until_it_floats(window)
            window.move(*place)
            wait_until(lambda: is_saved(frame_of(window)), what="the saved place")
            self.assertEqual(frame_of(window)[:2], place)

    def test_keeps_a_drag_by_its_title_bar(self):
        window = ShownViews("--quick").window()
        self.wait_for_corner(window)
        left, top, right, _ = frame_of(window)
        drag(window, ((left + right) // 2, top + 8), (-300, -200))
        wait_until(
            lambda: frame_of(window)[:2] == (left - 300, top - 200) and is_saved(frame_of(window)),
            what="the saved place",
        )

    def test_takes_no_answer_of_a_slow_window_manager_for_a_move(self):
        views = ShownViews("--quick")
        window = views.window()
        self.wait_for_corner(window)
        with desk.windows.stopped_manager():
            for rows in (6, 2, 5, 0, 3):
                views.do(f"rows {rows}")  # answers that come when the manager runs again are late
        self.wait_for_corner(window)
        views.do("quit")
        views.wait()
        self.assertFalse(SETTINGS.exists())

    def test_comes_back_there_also_when_the_window_manager_is_slow(self):
        save_frame(700, 400, 320, 258)
        with desk.windows.stopped_manager():
            views = ShownViews("--quick")
            views.do("status waits for the window manager")
        window = views.window()
        self.wait_for_corner(window, 1020, 658)

    def test_is_pulled_back_onto_the_screen(self):
        save_frame(SCREEN_WIDTH - 40, SCREEN_HEIGHT - 40, 320, 258)
        self.wait_for_corner(ShownViews("--quick").window(), SCREEN_WIDTH, SCREEN_HEIGHT)

    def test_comes_back_at_once_when_its_screen_is_unplugged(self):
        self.split_the_screen()
        window = ShownViews("--quick").window()
        self.wait_for_corner(window, right=SCREEN_WIDTH // 2 - 24)
        window.move(900, 100)
        wait_until(lambda: "VELKQuickWidget" in SETTINGS.read_text(), what="the saved place")
        screen.unplug("RIGHT")
        wait_until(
            lambda: frame_of(window)[2] == SCREEN_WIDTH // 2, what="its coming to the screen that is left"
        )

    def test_is_as_large_as_its_contents_on_a_screen_of_another_scale(self):
        self.split_the_screen()
        self.addCleanup(screen.unplug, "RIGHT")
        window = ShownViews("--quick", QT_SCREEN_SCALE_FACTORS="LEFT=1.5;RIGHT=1").window()
        self.wait_for_corner(window, right=SCREEN_WIDTH // 2 - 36, bottom=SCREEN_HEIGHT - 36)
        width = window.geometry.width
        half_over = SCREEN_WIDTH // 2 - width // 2 + 10  # made smaller there, its middle is on the left again
        for _ in range(2):
            window.move(half_over, 100)
            wait_until(lambda: window.geometry.width == width / 1.5, what="the size of the right screen")
            wait_until(lambda: frame_of(window)[0] >= SCREEN_WIDTH // 2, what="the panel on the right screen")
            window.move(100, 100)
            wait_until(lambda: window.geometry.width == width, what="the size of the left screen")

    def test_comes_back_when_it_was_minimised(self):
        views = ShownViews("--quick")
        window = views.window()
        wait_until(lambda: STATES <= window.states, what="the panel being managed")
        subprocess.run(["xdotool", "windowminimize", window.number], check=True)
        wait_until(lambda: "HIDDEN" in window.states, what="the panel being minimised")
        views.do("show")
        wait_until(lambda: "HIDDEN" not in window.states, what="the panel coming back")

    def test_sends_with_return_on_desktops_where_it_presses_any_control(self):
        views = ShownViews("--quick", "--key", XDG_CURRENT_DESKTOP="GNOME")
        wait_until(lambda: views.window().is_active, what="the panel being active")
        screen.type_text("Called about rent")
        screen.press("Tab", "Right", "space", "Return")
        sent = "send Alice Jones | Called about rent | 1"
        views.wait_for(sent)
        screen.press("shift+Tab", "shift+Tab", "Return")
        wait_until(lambda: views.lines.count(sent) == 2, what="the note sent from the chooser")

    def test_knows_no_shortcuts_of_the_menu(self):
        views = ShownViews("--quick", "--key", "--tray")
        wait_until(lambda: views.window().is_active, what="the panel being active")
        screen.press("ctrl+l", "ctrl+w", "ctrl+q")
        screen.type_text("still here")
        views.controls().find("What did you do?", "text").wait_for_text("still here")
        self.assertEqual([line for line in views.lines if line.startswith(("chosen", "ended", "closed"))], [])


if __name__ == "__main__":
    unittest.main()
