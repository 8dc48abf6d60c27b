"""A real browser as the user's default one, which trusts the local service's authority."""

import json
import os
import shlex
import subprocess

from desk import controls, screen, windows
from desk.waiting import LIMIT, wait_until

# No connection but the one to the page, no questions, no time but the real one. A browser hides its
# environment, by which the session would find it at the end; the script that started it does not.
_OPENER = """\
#!/bin/sh
unset LD_PRELOAD FAKETIME FAKETIME_SHARED FAKETIME_DONT_RESET
chromium --no-sandbox --test-type --user-data-dir={profile} --password-store=basic --no-first-run \\
  --disable-gpu --disable-quic --disable-background-networking --disable-component-update --disable-sync \\
  --disable-default-apps --force-renderer-accessibility --window-position=30,60 --window-size=880,640 "$1" &
trap 'kill -KILL $!' TERM
wait
"""
_NO_QUESTIONS = {"credentials_enable_service": False, "profile": {"password_manager_enabled": False}}


class Browser:
    """Takes the place of the home folder's xdg-open."""

    arguments = ["chromium"]

    def __init__(self, home, authority):
        profile = home.folder / "browser"
        (profile / "Default").mkdir(parents=True)
        (profile / "Default" / "Preferences").write_text(json.dumps(_NO_QUESTIONS))
        opener = home.folder / "bin" / "xdg-open"
        opener.write_text(_OPENER.format(profile=shlex.quote(str(profile))))
        opener.chmod(0o755)
        self._trust(home.folder / ".pki" / "nssdb", authority)

    @staticmethod
    def _trust(database, authority):
        database.mkdir(parents=True)
        tool = ["certutil", "-d", f"sql:{database}"]
        subprocess.run([*tool, "-N", "--empty-password"], check=True, capture_output=True)
        subprocess.run([*tool, "-A", "-t", "C,,", "-n", "local service", "-i", authority], check=True)

    def page(self, title, timeout=LIMIT):
        """The window that shows a page with this title, as soon as it does."""
        return windows.wait_for(f"{title} - Chromium", timeout=timeout)

    def wait_for_text(self, text):
        """Waits until the page that is open shows a paragraph or a heading with this text."""
        controls.of(self).find(text, "static")

    def sign_in(self, email, password):
        """Fills in the sign-in page as soon as it is there, as a user does."""
        page = self.page("Sign in – VELK", timeout=30)
        page.focus()
        self.pid = page.pid
        form = controls.of(self)
        self._fill(form.find("E-mail", "entry"), email)
        self._fill(form.find("Password", "password text"), password)
        screen.press("Return")

    @staticmethod
    def _fill(field, text):
        field.focus()
        screen.type_text(text)
        wait_until(lambda: len(field.text) == len(text), what=f"the text in {field}")
