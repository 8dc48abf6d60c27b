#!/usr/bin/env python3
"""The local service as a program: its command line, files and end. LOCAL_SERVICE names it."""

import http.client
import json
import os
import pathlib
import signal
import socket
import ssl
import stat
import subprocess
import tempfile
import unittest
import urllib.request

API = "/api/desktop"
EMAIL, PASSWORD = "dana@example.org", "right horse"
NOTE = {"participantId": "p-101", "input": "x", "durationMinutes": 15, "sessionDate": "2026-03-05"}


def ask(address, body=None, token="", trust=None):
    data = None if body is None else json.dumps(body).encode()
    request = urllib.request.Request(address, data, {"Authorization": f"Bearer {token}"})
    with urllib.request.urlopen(request, timeout=10, context=trust) as answer:
        return json.load(answer)


def sign_in(origin, trust=None):
    return ask(f"{origin}{API}/auth/login", {"email": EMAIL, "password": PASSWORD}, trust=trust)[
        "accessToken"
    ]


class ProgramTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def start(self, *arguments, password=PASSWORD):
        environment = {**os.environ, **({"LOCAL_SERVICE_PASSWORD": password} if password else {})}
        command = [os.environ["LOCAL_SERVICE"], *arguments]
        pipe = subprocess.PIPE
        self.program = subprocess.Popen(
            command, env=environment, stdout=pipe, stderr=subprocess.STDOUT, text=True
        )
        for end in (self.program.stdout.close, self.program.wait, self.program.kill):
            self.addCleanup(end)

    def start_plain(self, *more):
        """With the notes of earlier starts; returns a token."""
        ports = self.folder / "ports"
        files = ["--database", self.folder / "notes.db", "--port-file", ports]
        self.start("--plain", "--control-port", "0", "--account", EMAIL, *files, *more)
        printed = self.program.stdout.readline() + self.program.stdout.readline()
        self.port, control = map(int, ports.read_text().split())
        self.origin, self.control = f"http://localhost:{self.port}", f"http://localhost:{control}"
        self.assertEqual(printed, f"listening on {self.origin}\ncontrol on {self.control}\n")
        return sign_in(self.origin)

    def end(self, number):
        self.program.send_signal(number)
        return self.program.wait(10)

    def test_serves_its_account_over_tls(self):
        self.start("--tls-dir", self.folder / "tls", "--account", EMAIL)
        said, origin = self.program.stdout.readline().rsplit(maxsplit=1)
        self.assertEqual(said, "listening on")
        self.assertTrue(origin.startswith("https://localhost:"), origin)
        self.assertTrue(sign_in(origin, ssl.create_default_context(cafile=self.folder / "tls" / "ca.pem")))
        self.assertEqual(self.end(signal.SIGTERM), 0)

    def test_ends_soon_also_when_somebody_keeps_a_connection(self):
        self.start_plain()
        with socket.create_connection(("127.0.0.1", self.port)):
            self.assertEqual(self.end(signal.SIGINT), 0)

    def test_a_body_needs_its_length(self):
        self.start_plain()
        connection = http.client.HTTPConnection("localhost", self.port, timeout=10)
        self.addCleanup(connection.close)
        connection.putrequest("POST", "/login")
        connection.endheaders()
        self.assertEqual(connection.getresponse().status, 411)

    def test_keeps_its_files_to_its_owner(self):
        self.start("--tls-dir", self.folder / "tls", "--database", self.folder / "notes.db")
        self.program.stdout.readline()
        for name in ["notes.db", "notes.db-wal", "tls", "tls/server.key"]:
            self.assertEqual(stat.S_IMODE((self.folder / name).stat().st_mode) & 0o077, 0, name)

    def test_keeps_notes_and_tokens_when_killed(self):
        token = self.start_plain()
        ask(f"{self.origin}{API}/case-notes/capture", NOTE, token)
        self.assertEqual(self.end(signal.SIGKILL), -signal.SIGKILL)
        self.start_plain()
        ask(f"{self.origin}{API}/case-notes/capture", NOTE, token)
        self.assertEqual(len(ask(f"{self.control}/notes")), 2)

    def test_an_account_has_the_demonstrations_participants_until_it_is_given_others(self):
        people = self.folder / "people"
        people.write_text('[{"id": "1", "first_name": "A", "last_name": "B"}]')
        for arguments, count in [([], 12), (["--participants", people], 1), ([], 1)]:
            token = self.start_plain(*arguments)
            listed = ask(f"{self.origin}{API}/participants", token=token)["participants"]
            self.assertEqual(len(listed), count)
            self.end(signal.SIGTERM)

    def test_says_why_it_cannot_start(self):
        wrong = ["--tls-dir x", "--port 65536", "--port 80x", "--control-port -1", "--participants x", "y"]
        complaints = {
            line: "--help" for line in ["", "--plain --account a", *(f"--plain {w}" for w in wrong)]
        }
        complaints[f"--plain --database {self.folder}/no/such"] = "local-service: database: "
        for line, complaint in complaints.items():
            with self.subTest(line):
                self.start(*line.split(), password=None)
                self.assertIn(complaint, self.program.communicate(timeout=10)[0])
                self.assertEqual(self.program.returncode, 2 if complaint == "--help" else 1)


if __name__ == "__main__":
    unittest.main()
