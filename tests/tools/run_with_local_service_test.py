#!/usr/bin/env python3
"""The script that runs the program with a service of its own; a stub takes the program's place."""

import json
import os
import re
import shutil
import signal
import ssl
import subprocess
import sys
import tempfile
import unittest
import urllib.request
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[2] / "tools" / "run-with-local-service"
LOCAL_SERVICE = sys.argv.pop()
LIMIT = 60  # seconds

# Says so on the script's output, and runs until it is ended; a second one ends at once, as the program does.
STUB = """\
#!/bin/sh
mkdir "$HOME/runs" 2>/dev/null && first=yes
echo "program $$ in $HOME with $SSL_CERT_FILE and $*"
[ -z "$first" ] || exec sleep infinity
"""


class Running:
    """The script, the service and the stub, as far as the script's output tells of them."""

    def __init__(self, build, *arguments):
        self.process = subprocess.Popen(
            [SCRIPT, build, *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True
        )
        self.printed = ""
        while "program " not in self.printed and (line := self.process.stdout.readline()):
            self.printed += line
        pid, self.home, self.authority, self.arguments = re.search(
            r"program (\d+) in (.*) with (.*) and (.*)", self.printed
        ).groups()
        self.pid = int(pid)

    def said(self, pattern):
        return re.search(pattern, self.printed)[1]

    def sign_in(self):
        """The status of signing in at the service with what the script has printed."""
        form = {"email": self.said(r"with +(\S+@\S+)"), "password": self.said(r"password +(\S+)")}
        origin = self.said(r"(https://localhost:\d+)/case-notes")
        trust = ssl.create_default_context(cafile=self.authority)
        with urllib.request.urlopen(
            origin + "/api/desktop/auth/login", json.dumps(form).encode(), context=trust, timeout=LIMIT
        ) as answer:
            return answer.status

    def children(self):
        pid = self.process.pid
        return [int(child) for child in Path(f"/proc/{pid}/task/{pid}/children").read_text().split()]

    def wait(self):
        self.process.stdout.close()
        return self.process.wait(LIMIT)

    def end(self):
        if self.process.poll() is None:
            self.process.terminate()
        self.wait()
        shutil.rmtree(Path(self.home, "runs"), ignore_errors=True)


class RunWithLocalService(unittest.TestCase):
    def setUp(self):
        self.build = Path(self.enterContext(tempfile.TemporaryDirectory()), "build", "release")
        beside = self.build / "tools" / "local-service"
        beside.mkdir(parents=True)
        shutil.copy(LOCAL_SERVICE, beside)
        stub = self.build / "notewick"
        stub.write_text(STUB)
        stub.chmod(0o755)

    def run_script(self, *arguments):
        running = Running(self.build, *arguments)
        self.addCleanup(running.end)
        return running

    def test_prints_a_password_that_signs_in_and_gives_the_program_a_home_of_its_own(self):
        running = self.run_script("--selftest")
        self.assertEqual(running.sign_in(), 200)
        self.assertEqual(running.home, str(self.build.parent / "run" / "home"))
        self.assertEqual(running.arguments, "--selftest")

    def test_ends_both_when_it_or_the_program_is_ended(self):
        for ends_script in (True, False):
            running = self.run_script()
            started = running.children()
            self.assertEqual(len(started), 2)
            os.kill(running.process.pid if ends_script else running.pid, signal.SIGTERM)
            status = running.wait()
            self.assertEqual([pid for pid in started if Path("/proc", str(pid)).exists()], [])
            if ends_script:
                self.assertEqual(status, 128 + signal.SIGTERM)
            running.end()

    def test_keeps_account_and_settings_for_the_next_time(self):
        first = self.run_script()
        settings = Path(first.home, ".config", "VELK", "Notewick.ini")
        first.end()
        settings.write_text(settings.read_text() + "VELKUserEmail=dana@example.org\n")
        second = self.run_script()
        self.assertEqual(second.said(r"password +(\S+)"), first.said(r"password +(\S+)"))
        self.assertEqual(second.sign_in(), 200)
        origin = second.said(r"(https://localhost:\d+)/case-notes")
        lines = [line for line in settings.read_text().splitlines() if line]
        self.assertEqual(lines, ["[General]", f"VELKBaseURL={origin}", "VELKUserEmail=dana@example.org"])

    def test_started_again_leaves_the_running_service_alone(self):
        running = self.run_script()
        again = Running(self.build, "again")
        self.assertEqual((again.wait(), again.arguments), (0, "again"))
        self.assertEqual(running.sign_in(), 200)


if __name__ == "__main__":
    unittest.main()
