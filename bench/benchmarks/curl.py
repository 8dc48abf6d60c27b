"""curl as a neighbour: the same notes, six at a time, a connection each."""

import json
import resource
import subprocess
import time

from desk.local_service import CAPTURE


def _transfer(service, token, note):
    """One transfer in the language of curl's configuration files."""
    body = {
        "participantId": note["participantId"],
        "input": note["input"],
        "durationMinutes": note["minutes"],
        "sessionDate": note["sessionDate"],
    }
    options = {
        "url": service.origin + CAPTURE,
        "cacert": service.authority,
        "header": f"Authorization: Bearer {token}",
        "json": json.dumps(body),
        "output": "/dev/null",
    }
    return "\n".join(f"{name} = {json.dumps(value)}" for name, value in options.items())


def _processor_seconds():
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def send(user):
    """Sends the notes of a user's outbox; the seconds, and those of processor time, that it takes."""
    service, notes = user.service, user.home.list("outbox.json")
    token = user.log_in()["accessToken"]
    configuration = user.folder / "curl"
    transfers = (_transfer(service, token, note) for note in notes)
    configuration.write_text("\nnext\n".join(transfers))
    command = ["curl", "--silent", "--fail", "--parallel", "--parallel-max", "6", "--config", configuration]
    started, used = time.monotonic(), _processor_seconds()
    subprocess.run(command, stderr=subprocess.DEVNULL, check=True)
    taken = time.monotonic() - started, _processor_seconds() - used
    if len(service.notes()) != len(notes):
        raise AssertionError(f"curl left {len(service.notes())} of {len(notes)} notes")
    return taken
