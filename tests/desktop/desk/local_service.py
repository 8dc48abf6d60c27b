"""The local service beside the program: started and stopped, made to fail, and read back."""

import json
import os
import urllib.request
from pathlib import Path

from desk import programs
from desk.waiting import wait_until

EMAIL = "dana@example.org"
PASSWORD = "right horse"

LOGIN = "/api/desktop/auth/login"
REFRESH = "/api/desktop/auth/refresh"
PARTICIPANTS = "/api/desktop/participants"
CAPTURE = "/api/desktop/case-notes/capture"

_PROGRAM = os.environ.get("LOCAL_SERVICE", "")


class LocalService:
    """A service over TLS with one account and the participants of these names, "First Last".

    None are the twelve of the demonstration. Its database and its port outlive stop() and start().
    """

    def __init__(self, folder, environment=None, participants=None):
        self.folder = Path(folder)
        self._environment = {**(environment or {}), "LOCAL_SERVICE_PASSWORD": PASSWORD}
        self._port = "0"
        self.program = None
        self._participants = self._file_of(participants) if participants else None
        self._notes_of_earlier_tests = 0
        self.start()

    def _file_of(self, participants):
        named = [dict(zip(("first_name", "last_name"), name.split(" ", 1))) for name in participants]
        path = self.folder / "participants.json"
        path.write_text(json.dumps([{"id": f"p-{number}", **name} for number, name in enumerate(named)]))
        return path

    def start(self):
        """Starts it unless it runs."""
        if self.program and self.program.is_running:
            return
        ports = self.folder / "ports"
        ports.unlink(missing_ok=True)
        arguments = ["--tls-dir", self.folder / "tls", "--database", self.folder / "notes.db"]
        arguments += ["--account", EMAIL]
        arguments += ["--participants", self._participants] if self._participants else []
        arguments += ["--port", self._port, "--control-port", "0", "--port-file", ports]
        self.program = programs.start(_PROGRAM, *arguments, environment=self._environment)
        wait_until(lambda: ports.exists() or not self.program.is_running, what="the service's port")
        if not ports.exists():
            raise AssertionError(f"the service did not start: {self.program.output}")
        self._port, self._control_port = ports.read_text().split()

    def stop(self):
        self.program.close()

    def signal(self, number):
        self.program.signal(number)

    @property
    def origin(self):
        return f"https://localhost:{self._port}"

    @property
    def authority(self):
        """The file by which programs trust it."""
        return str(self.folder / "tls" / "ca.pem")

    def _control(self, path, method="GET", body=None):
        url = f"http://localhost:{self._control_port}{path}"
        data = None if body is None else json.dumps(body).encode()
        with urllib.request.urlopen(urllib.request.Request(url, data, method=method), timeout=10) as answer:
            text = answer.read()
        return json.loads(text) if text else None

    def fail(self, path=CAPTURE, **fault):
        """Adds a fault for one path, for example status=503, times=2 or cut="after"."""
        self._control("/faults", "POST", {"path": path, **fault})

    def work_again(self):
        self._control("/faults", "DELETE")

    def requests(self, path):
        return [request for request in self._control("/requests") if request["path"] == path]

    def forget(self):
        """Works again, and no longer tells of the requests and the notes so far."""
        self.work_again()
        self._control("/requests", "DELETE")
        self._notes_of_earlier_tests = len(self._control("/notes"))

    def bearer(self):
        """The access token of the last note."""
        return self.requests(CAPTURE)[-1]["headers"]["Authorization"].split()[1]

    def notes(self):
        """Everyone's notes, in the order of capture."""
        return self._control("/notes")[self._notes_of_earlier_tests :]

    def inputs(self):
        return [note["input"] for note in self.notes()]

    def wait_for_notes(self, *inputs):
        wait_until(lambda: self.inputs() == list(inputs), what=f"the notes {inputs} in the service")
