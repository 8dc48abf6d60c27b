#!/usr/bin/python3
"""What a blind user hears: each panel gone through by the keyboard, word by word as Orca says it."""

import unittest

import desk
from desk import local_service, screen, tray
from desk.story import Story
from spoken_words import Orca

NOTE = "What did you do? One line is enough. text."
MINUTES = "Minutes — you set this. panel."
CHOSEN = "Amara Osei combo box.", "Participant."
DAY = "2026-03-05"


class Heard(Story):
    participants = ["Lena O'Keefe", "Amara Osei", "Amara Stone", "Zoë Abel"]

    def test_the_sign_in_panel(self):
        orca = Orca()
        self.start()
        orca.hears(
            "Sign in to VELK dialog Sign in with your VELK account Notewick needs your VELK login so "
            "confirmed work becomes case notes in your account.",
            "Email text.",
            "name@agency.example.",
        )
        orca.press("Tab", "Password password text.")
        orca.press("Tab", "Sign in push button.")
        orca.press("shift+Tab", "Password password text.")
        orca.press("shift+Tab", "Email text.", "name@agency.example.")
        orca.press("Return", "notification Enter your email and password.")
        screen.type_text(local_service.EMAIL)
        orca.press("Tab", "Password password text.")
        orca.press("x", "•")
        orca.press(
            "Return",
            "notification Invalid email or password. If you sign in to VELK with Google, set a password "
            f"first via “Forgot password” at {self.service.origin}/login.",
        )

    def test_the_widget_and_the_menu(self):
        self.start_signed_in().close()
        caught = self.home.caught_work
        self.home.leave_caught(
            [caught(1, "Lena O'Keefe", observedMinutes=7), caught(2, "Zoë Abel", observedMinutes=9)]
        )
        self.orca = Orca()
        program = self.start()
        desk.wait_until(lambda: program.widget.caught(), what="the rows")
        program.choose("Log work now (call, visit…)")
        self.hear_the_form()
        self.hear_the_chooser()
        self.hear_what_happens()
        self.hear_the_rows()
        self.hear_the_menu()

    def hear_the_form(self):
        rows = f"Lena O'Keefe · ~7m · {DAY} Zoë Abel · ~9m · {DAY}."
        self.orca.hears(f"VELK — quick note dialog Caught — confirm or skip {rows}", NOTE)
        self.orca.press("Tab", MINUTES, "15.", "not selected radio button")
        self.orca.press("Right", "30.", "not selected radio button")
        self.orca.press("space", "selected")
        self.orca.press("Right", "45.", "selected radio button")
        self.orca.press("Tab", "Send to VELK push button.")
        for name, minutes in (("Lena O'Keefe", 7), ("Zoë Abel", 9)):
            self.orca.press("Tab", f"Log {name} · ~{minutes}m · {DAY} push button.")
            self.orca.press("Tab", f"Skip {name} · ~{minutes}m · {DAY} push button.")
        self.orca.press("Tab", *CHOSEN)

    def hear_the_chooser(self):
        self.orca.press("Down", "List with 4 items.", "Amara Stone.")
        self.orca.press("Up", "Amara Osei.")
        self.orca.press("z", "Zoë Abel.")
        self.orca.press("space", "List with 4 items.")
        self.orca.press("Up", "Lena O'Keefe.")
        self.orca.press("Escape", "Zoë Abel combo box.", "Participant.")
        self.orca.press("Tab", NOTE)

    def hear_what_happens(self):
        self.orca.press("ctrl+Return", "notification Say what you did.")
        screen.type_text("rent")
        self.orca.press("ctrl+Return", "notification Sent — finish it on VELK.")

    def hear_the_rows(self):
        self.orca.press("Tab", MINUTES, "45.", "not selected radio button")
        self.orca.press("Tab", "Send to VELK push button.")
        self.orca.press("Tab", f"Log Lena O'Keefe · ~7m · {DAY} push button.")
        self.orca.press("Tab", f"Skip Lena O'Keefe · ~7m · {DAY} push button.")
        self.orca.press("Return", f"Skip Zoë Abel · ~9m · {DAY} push button.")
        self.orca.press("shift+Tab", f"Log Zoë Abel · ~9m · {DAY} push button.")
        self.orca.press("Return", NOTE)
        hint = "On screen ≈ 9 min — you set the duration. panel."
        self.orca.press("Tab", hint, "45.", "not selected radio button")

    def hear_the_menu(self):
        tray.open_menu()
        screen.wait_until_still()  # a key before that is lost
        self.orca.press("Down", f"Log: Zoë Abel (~9 min, {DAY})")
        self.orca.press("Down", "Log work now (call, visit…) Ctrl+L.")
        self.orca.press("Down", "Hide floating widget Ctrl+W.")


if __name__ == "__main__":
    unittest.main(verbosity=2)
