"""Notes on their way: many at once, and many while the service is down."""

import time

import desk
from benchmarks import curl
from benchmarks.processes import DiskCount, processor_seconds, wait_for_rest
from benchmarks.programs import BARE_QT
from benchmarks.pulse import Pulse, beat_until
from benchmarks.series import Reading
from benchmarks.user import SignedIn
from desk import tray
from desk.bus_traffic import BusTraffic
from desk.local_service import CAPTURE, REFRESH
from desk.notewick import stored_token

PATIENCE = 120  # seconds
SECRETS = "org.freedesktop.secrets"


def is_empty(tool_tip):
    """Whether nothing waits, as the tray's tool tip says it."""
    return tool_tip.startswith("VELK —")


class Watch:
    """What sending costs a program from now on; a bare tray icon is asked beside it."""

    def __init__(self, program, disk, neighbour):
        self._program, self._disk_count = program, disk
        self._own, self._beside = Pulse(program.tray), Pulse(tray.item(neighbour))
        self._disk = disk.so_far()
        self._processor = processor_seconds(program.pid)
        self._started = time.monotonic()

    def until(self, condition):
        """The readings when the condition holds for the program's tool tip."""
        beat_until(condition, self._own, [self._beside])
        figures = {
            "seconds": Reading(time.monotonic() - self._started),
            "stall": Reading(1000 * self._own.longest, 1000 * self._beside.longest),
            "processor": Reading(processor_seconds(self._program.pid) - self._processor),
        }
        megabytes, flushes = (now - before for now, before in zip(self._disk_count.so_far(), self._disk))
        return {**figures, "megabytes": Reading(megabytes), "flushes": Reading(flushes)}


class Sender:
    """A user with notes waiting, and the icon that is asked beside the program."""

    def __init__(self):
        self.user = SignedIn()
        self.neighbour = desk.start(BARE_QT, "tray")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        desk.close_all()

    def start(self, disk):
        """The program, once its icon is there."""
        program = self.user.start(disk)
        program.tray
        return program

    def start_with_refused_notes(self, count, disk=None):
        """The program at rest, with a fresh access token; every note was tried once, and the service is well."""
        self.user.put_notes(count)
        self.user.service.fail(CAPTURE, status=503)
        program = self.start(disk)
        desk.wait_until(self.all_were_tried, PATIENCE, "the first tries")
        wait_for_rest(program.pid)
        self.user.service.work_again()
        return program

    def all_were_tried(self):
        return all(note["attempts"] > 0 for note in self.user.home.list("outbox.json"))

    def check_sent(self, program, count):
        desk.wait_until(lambda: self.user.home.list("outbox.json") == [], what="the saved outbox")
        if len(self.user.service.notes()) != count or stored_token() is None:
            raise AssertionError(
                f"{len(self.user.service.notes())} of {count} notes came, token {stored_token()}"
            )
        program.quit()


def _beside(readings, **others):
    return {key: Reading(reading.own, others.get(key, reading.beside)) for key, reading in readings.items()}


def drain(count, rounds):
    """Notes that the service has refused to take for now, and takes when they are tried again, beside curl."""
    with Sender() as sender:
        for _ in range(rounds):
            sender.user.put_notes(count)
            seconds, processor = curl.send(sender.user)
            disk = DiskCount()
            program = sender.start_with_refused_notes(count, disk)
            watch = Watch(program, disk, sender.neighbour)
            program.choose("Retry now")
            figures = watch.until(is_empty)
            sender.check_sent(program, count)
            yield _beside(figures, seconds=seconds, processor=processor)


def backlog(count, rounds):
    """Notes that wait at the start of the program."""
    with Sender() as sender:
        for _ in range(rounds):
            sender.user.put_notes(count)
            disk = DiskCount()
            program = sender.start(disk)
            watch = Watch(program, disk, sender.neighbour)
            beat_until(lambda tool_tip: not is_empty(tool_tip), Pulse(program.tray))
            figures = watch.until(is_empty)
            refreshes = len(sender.user.service.requests(REFRESH))
            sender.check_sent(program, count)
            yield {**figures, "refreshes": Reading(refreshes)}


def bus(count, rounds):
    """What is said on the session bus while notes go."""
    with Sender() as sender:
        for _ in range(rounds):
            program = sender.start_with_refused_notes(count)
            with BusTraffic() as traffic:
                program.choose("Retry now")
                beat_until(is_empty, Pulse(program.tray))
            counted, asked = traffic.count_of(program).total(), traffic.count_with(program, SECRETS)
            sender.check_sent(program, count)
            yield {"all": Reading(counted / count), "secrets": Reading(asked / count)}


def outage(counts, rounds):
    """A minute with so many notes waiting and nobody at the service's port; keys begin with the number."""
    with Sender() as sender:
        for _ in range(rounds):
            figures = {}
            for count in counts:
                for key, reading in _minute_without_service(sender, count).items():
                    figures[count, key] = reading
            yield figures


def _minute_without_service(sender, count):
    sender.user.service.start()
    sender.user.put_notes(count)
    sender.user.service.stop()
    disk = DiskCount()
    program = sender.start(disk)
    program.wait_for_entry(f"{count} notes waiting to send to VELK")
    first_tries = time.monotonic() + 20
    beat_until(lambda _: time.monotonic() > first_tries, Pulse(program.tray))
    watch = Watch(program, disk, sender.neighbour)
    over = time.monotonic() + 60
    figures = watch.until(lambda _: time.monotonic() > over)
    if not all(note["attempts"] > 1 for note in sender.user.home.list("outbox.json")):
        raise AssertionError("not every note was tried again within a minute")
    program.quit()
    return figures
