"""The panels as a window manager, a keyboard and a screen reader meet them."""

import os
import re
import subprocess
import unittest

import desk
from desk import screen, wait_until
from shown_views import QUICK_NOTE, SIGN_IN, ShownViews

SCREEN_WIDTH, SCREEN_HEIGHT = 1280, 800
START_OF_A_DRAG = 16  # pixels that the mouse moves before a window follows
STATES = {"ABOVE", "SKIP_TASKBAR", "SKIP_PAGER"}


def frame_of(window):
    """left, top, right and bottom of the window with its title bar and borders."""
    printed = subprocess.run(
        ["xprop", "-notype", "-id", window.number, "_NET_FRAME_EXTENTS"], capture_output=True, text=True, check=True
    ).stdout
    left, right, top, bottom = (int(n) for n in re.findall(r"\d+", printed.partition("=")[2]))
    inner = window.geometry
    return (inner.x - left, inner.y - top, inner.x + inner.width + right, inner.y + inner.height + bottom)


def drag(start, way):
    """Presses the left button at a place, moves in small steps, lets go."""
    steps = ["mousemove", "--sync", *map(str, start), "mousedown", "1"]
    for step in range(1, 101):
        steps += ["mousemove", *(str(s + w * step // 100) for s, w in zip(start, way)), "sleep", "0.005"]
    subprocess.run(["xdotool", *steps, "mouseup", "1"], check=True)


def settings_path():
    return os.path.join(os.environ["XDG_CONFIG_HOME"], "VELK", "Notewick.ini")


def settings_text():
    with open(settings_path(), encoding="utf-8") as file:
        return file.read()


def save_frame(*frame):
    os.makedirs(os.path.dirname(settings_path()), exist_ok=True)
    with open(settings_path(), "w", encoding="utf-8") as file:
        file.write(f"[General]\nVELKQuickWidget={' '.join(map(str, frame))}\n")


def brightness_of(window):
    """The mean of all its pixels, from 0 to 255."""
    picture = ["import", "-window", window.number, "-colorspace", "Gray", "-resize", "1x1!", "-depth", "8", "gray:-"]
    return subprocess.run(picture, capture_output=True, check=True).stdout[0]


class Panels(unittest.TestCase):
    def setUp(self):
        self.addCleanup(desk.close_all)

    def show(self, *options, **environment):
        views = ShownViews(*options, **environment)
        self.addCleanup(views.close)
        return views

    def wait_for_corner(self, window, right, bottom):
        wait_until(lambda: frame_of(window)[2:] == (right, bottom), what=f"the corner {right}, {bottom}")


class TheQuickNotePanel(Panels):
    def tearDown(self):
        if os.path.exists(settings_path()):
            os.remove(settings_path())

    def test_floats_above_the_others_on_every_desktop_and_in_no_task_bar(self):
        window = self.show("--quick").window()
        wait_until(lambda: STATES <= window.states, what="the states of a floating window")
        self.assertTrue(window.is_on_all_desktops)
        self.assertIn("UTILITY", window.types)

    def test_floats_each_time_it_is_shown(self):
        views = self.show("--quick")
        for _ in range(5):
            views.window()
            views.do("hide")
            views.do("show")
        window = views.window()
        wait_until(lambda: STATES <= window.states and window.is_on_all_desktops, what="a floating window")

    def test_is_tied_to_no_other_window_of_the_program(self):
        views = self.show("--quick")
        for _ in range(2):
            window = views.window()
            wait_until(lambda: STATES <= window.states, what="the panel being managed")
            wait_until(lambda: not window.is_transient, what="a window that stands alone")
            views.do("hide")
            views.do("show")

    def test_leaves_the_keyboard_where_it_is(self):
        xterm = desk.xterm("the user's work")
        xterm.window().focus()
        window = self.show("--quick").window()
        wait_until(lambda: STATES <= window.states, what="the panel being managed")
        self.assertTrue(xterm.window().is_active)

    def test_takes_the_keyboard_when_it_is_told_to(self):
        xterm = desk.xterm("the user's work")
        views = self.show("--quick")
        window = views.window()
        xterm.window().focus()
        views.do("key")
        wait_until(lambda: window.is_active, what="the panel being active")
        screen.type_text("ok")
        note = views.controls().find("What did you do?", "text")
        note.wait_for_text("ok")
        self.assertTrue(note.focused)

    def test_takes_the_keyboard_also_when_it_was_hidden(self):
        desk.xterm("the user's work").window().focus()
        views = self.show("--quick")
        views.window()
        views.do("hide")
        views.do("key")
        wait_until(lambda: views.window().is_active, what="the panel being active")

    def test_stands_in_the_bottom_right_corner_and_stays_there_when_it_grows(self):
        views = self.show("--quick")
        window = views.window()
        self.wait_for_corner(window, SCREEN_WIDTH - 24, SCREEN_HEIGHT - 24)
        height = window.geometry.height
        views.do("rows 6")
        wait_until(lambda: window.geometry.height > height + 80, what="a taller panel")
        self.wait_for_corner(window, SCREEN_WIDTH - 24, SCREEN_HEIGHT - 24)
        views.do("rows 0")
        wait_until(lambda: window.geometry.height == height, what="the old height")
        self.wait_for_corner(window, SCREEN_WIDTH - 24, SCREEN_HEIGHT - 24)

    def test_moves_by_its_background_and_comes_back_there(self):
        views = self.show("--quick")
        window = views.window()
        self.wait_for_corner(window, SCREEN_WIDTH - 24, SCREEN_HEIGHT - 24)
        left, top, _, _ = frame_of(window)
        inner = window.geometry
        drag((inner.x + inner.width - 5, inner.y + inner.height - 5), (-300, -200))
        wait_until(lambda: "VELKQuickWidget" in settings_text(), what="the saved place")
        place = frame_of(window)
        self.assertAlmostEqual(place[0], left - 300, delta=START_OF_A_DRAG)
        self.assertAlmostEqual(place[1], top - 200, delta=START_OF_A_DRAG)
        views.close()
        again = self.show("--quick").window()
        wait_until(lambda: frame_of(again) == place, what="the place of the last time")

    def test_keeps_a_move_as_soon_as_it_stands_in_its_place(self):
        window = self.show("--quick").window()
        self.wait_for_corner(window, SCREEN_WIDTH - 24, SCREEN_HEIGHT - 24)
        window.move(300, 200)
        wait_until(lambda: "VELKQuickWidget" in settings_text(), what="the saved place")
        left, top, right, bottom = frame_of(window)
        self.assertIn(f"={left} {top} {right - left} {bottom - top}\n", settings_text())

    def test_keeps_a_drag_by_its_title_bar(self):
        window = self.show("--quick").window()
        self.wait_for_corner(window, SCREEN_WIDTH - 24, SCREEN_HEIGHT - 24)
        left, top, right, _ = frame_of(window)
        drag(((left + right) // 2, top + 8), (-300, -200))
        wait_until(lambda: "VELKQuickWidget" in settings_text(), what="the saved place")
        self.assertEqual(frame_of(window)[:2], (left - 300, top - 200))

    def test_takes_no_answer_of_a_slow_window_manager_for_a_move(self):
        views = self.show("--quick")
        window = views.window()
        self.wait_for_corner(window, SCREEN_WIDTH - 24, SCREEN_HEIGHT - 24)
        with desk.windows.stopped_manager():
            for rows in (6, 2, 5, 0, 3):
                views.do(f"rows {rows}")
        self.wait_for_corner(window, SCREEN_WIDTH - 24, SCREEN_HEIGHT - 24)
        views.do("quit")
        views.wait()
        self.assertFalse(os.path.exists(settings_path()))

    def test_comes_back_there_also_when_the_window_manager_is_slow(self):
        save_frame(700, 400, 320, 258)
        with desk.windows.stopped_manager():
            views = self.show("--quick")
            views.do("status waits for the window manager")
        self.wait_for_corner(views.window(), 1020, 658)

    def test_is_pulled_back_onto_the_screen(self):
        views = self.show("--quick")
        window = views.window()
        self.wait_for_corner(window, SCREEN_WIDTH - 24, SCREEN_HEIGHT - 24)
        window.move(SCREEN_WIDTH - 40, SCREEN_HEIGHT - 40)
        wait_until(lambda: "VELKQuickWidget" in settings_text(), what="the saved place")
        views.close()
        again = self.show("--quick").window()
        self.wait_for_corner(again, SCREEN_WIDTH, SCREEN_HEIGHT)

    def test_comes_back_when_it_was_minimised(self):
        views = self.show("--quick")
        window = views.window()
        wait_until(lambda: STATES <= window.states, what="the panel being managed")
        subprocess.run(["xdotool", "windowminimize", window.number], check=True)
        wait_until(lambda: "HIDDEN" in window.states, what="the panel being minimised")
        views.do("show")
        wait_until(lambda: "HIDDEN" not in window.states, what="the panel coming back")

    def test_outlives_its_closing(self):
        views = self.show("--quick")
        views.window().ask_to_close()
        views.wait_for("closed")
        desk.windows.wait_until_gone(QUICK_NOTE, views.pid)
        views.do("show")
        views.window()

    def test_does_not_count_quitting_as_closing(self):
        views = self.show("--quick")
        views.window()
        views.do("quit")
        self.assertEqual(views.wait(), 0)
        self.assertIn("ended", views.lines)
        self.assertNotIn("closed", views.lines)

    def test_is_worked_by_the_keyboard_alone(self):
        views = self.show("--quick", "--key", "--caught", "2")
        wait_until(lambda: views.window().is_active, what="the panel being active")
        screen.type_text("Called about rent")
        screen.press("Tab", "Right", "space", "ctrl+Return")
        views.wait_for("send Alice Jones | Called about rent | 1")
        screen.press("Tab", "Tab", "Tab", "space", "Tab", "Tab", "Return")
        views.wait_for("skip 0")
        views.wait_for("skip 1")

    def test_sends_with_return_on_desktops_where_it_presses_any_control(self):
        views = self.show("--quick", "--key", XDG_CURRENT_DESKTOP="GNOME")
        wait_until(lambda: views.window().is_active, what="the panel being active")
        screen.type_text("Called about rent")
        screen.press("Tab", "Right", "space", "Return")
        sent = "send Alice Jones | Called about rent | 1"
        views.wait_for(sent)
        screen.press("shift+Tab", "shift+Tab", "Return")
        wait_until(lambda: views.lines.count(sent) == 2, what="the note sent from the chooser")

    def test_knows_no_shortcuts_of_the_menu(self):
        views = self.show("--quick", "--key", "--tray")
        wait_until(lambda: views.window().is_active, what="the panel being active")
        screen.press("ctrl+l", "ctrl+w", "ctrl+q")
        screen.type_text("still here")
        views.controls().find("What did you do?", "text").wait_for_text("still here")
        self.assertEqual([line for line in views.lines if line.startswith(("chosen", "ended", "closed"))], [])

    def test_is_read_and_worked_by_a_screen_reader(self):
        views = self.show("--quick", "--caught", "2", "--status", "2 queued — will retry")
        panel = views.controls().find(QUICK_NOTE, "dialog")
        chooser = panel.find("Participant", "combo box")
        self.assertEqual(chooser.entries(), ["Alice Jones", "Bob Smith", "Lena O'Keefe"])
        panel.find("What did you do?", "text").write("Called about rent")
        panel.find("Minutes", "panel").find("45", "radio button").click()
        panel.find("Send to VELK", "push button").click()
        views.wait_for("send Alice Jones | Called about rent | 2")
        panel.find("Log Tobias Hargreave · ~12m · 2024-05-02", "push button").click()
        views.wait_for("log 1")
        self.assertTrue(panel.has("Lena O'Keefe · ~12m · 2024-05-02", "label"))

    def test_follows_a_change_of_colours(self):
        views = self.show("--quick", "--caught", "2")
        window = views.window()
        wait_until(lambda: brightness_of(window) > 180, what="light colours")
        views.do("dark")
        wait_until(lambda: brightness_of(window) < 80, what="dark colours")
        views.do("light")
        wait_until(lambda: brightness_of(window) > 180, what="light colours")

    def test_speaks_its_status(self):
        views = self.show("--quick")
        panel = views.controls()
        panel.find("Send to VELK", "push button")
        self.assertEqual(panel.all(role="notification"), [])
        views.do("status Pick a duration")
        panel.find("Pick a duration", "notification")
        views.do("status ")
        wait_until(lambda: not panel.all(role="notification"), what="the end of the notification")


class TheSignInPanel(Panels):
    def test_takes_the_keyboard_in_the_middle_of_the_screen(self):
        desk.xterm("the user's work").window().focus()
        views = self.show("--sign-in")
        window = views.window(SIGN_IN)
        wait_until(lambda: window.is_active and STATES <= window.states, what="the panel being active")
        left, top, right, bottom = frame_of(window)
        self.assertAlmostEqual(left + right, SCREEN_WIDTH, delta=2)
        self.assertAlmostEqual(top + bottom, SCREEN_HEIGHT + 31, delta=2)  # the tray's host is at the top
        screen.type_text("anna@example.org")
        screen.press("Return")
        views.wait_for("sign in anna@example.org")

    def test_is_read_by_a_screen_reader(self):
        views = self.show("--sign-in", "--error", "Enter your email and password.", "--busy")
        panel = views.controls().find(SIGN_IN, "dialog")
        panel.find("Email", "text")
        self.assertEqual(panel.find("Password", "text").text, "")
        panel.find("Enter your email and password.", "notification")
        self.assertFalse(panel.find("Sign in", "push button").enabled)

    def test_tells_of_a_close_by_the_user(self):
        views = self.show("--sign-in")
        views.window(SIGN_IN).ask_to_close()
        views.wait_for("closed")


if __name__ == "__main__":
    unittest.main()
