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
MINUTE = 60  # seconds: how often the program tries again
SECRETS = "org.freedesktop.secrets"


def waits(item):
    """Whether notes wait, as the tray item's tool tip says it."""
    return not str(item.read("ToolTip", timeout=PATIENCE)[2]).startswith("VELK —")


class Cost:
    """What a program uses from now on."""

    def __init__(self, program, disk):
        self._program, self._disk = program, disk
        self._started = time.monotonic()
        self._before = self._used()

    def _used(self):
        return processor_seconds(self._program.pid), *self._disk.so_far()

    def readings(self):
        used = (now - before for now, before in zip(self._used(), self._before))
        figures = dict(zip(("processor", "megabytes", "flushes"), map(Reading, used)))
        return {"seconds": Reading(time.monotonic() - self._started), **figures}


class Stall:
    """The longest stall of the program of a tray item, and of a bare one that is asked beside it."""

    def __init__(self, item, neighbour):
        self._pulses = Pulse(item), Pulse(tray.item(neighbour))

    def until(self, condition):
        beat_until(condition, self._pulses)
        own, beside = (1000 * pulse.longest for pulse in self._pulses)
        return {"stall": Reading(own, beside)}


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


def _until_sent(sender, program, disk, begin):
    """The readings from `begin` until nothing waits."""
    item = program.tray
    stall = Stall(item, sender.neighbour)
    cost = Cost(program, disk)
    begin()
    figures = stall.until(lambda: not waits(item))
    return figures | cost.readings()


def drain(count, rounds):
    """Notes that the service has refused to take for now, and takes when they are tried again, beside curl."""
    with Sender() as sender:
        for _ in range(rounds):
            sender.user.put_notes(count)
            seconds, processor = curl.send(sender.user)
            disk = DiskCount()
            program = sender.start_with_refused_notes(count, disk)
            figures = _until_sent(sender, program, disk, lambda: program.choose("Retry now"))
            sender.check_sent(program, count)
            yield figures | {
                "seconds": Reading(figures["seconds"].own, seconds),
                "processor": Reading(figures["processor"].own, processor),
            }


def backlog(count, rounds):
    """Notes that wait at the start of the program."""
    with Sender() as sender:
        for _ in range(rounds):
            sender.user.put_notes(count)
            disk = DiskCount()
            program = sender.start(disk)
            begun = lambda: desk.wait_until(lambda: waits(program.tray), what="the waiting notes")
            figures = _until_sent(sender, program, disk, begun)
            refreshes = len(sender.user.service.requests(REFRESH))
            sender.check_sent(program, count)
            yield figures | {"refreshes": Reading(refreshes)}


def bus(count, rounds):
    """What is said on the session bus while notes go."""
    with Sender() as sender:
        for _ in range(rounds):
            program = sender.start_with_refused_notes(count)
            with BusTraffic() as traffic:
                program.choose("Retry now")
                desk.wait_until(lambda: not waits(program.tray), PATIENCE, "the end of the outbox")
            counted, asked = traffic.count_of(program).total(), traffic.count_with(program, SECRETS)
            sender.check_sent(program, count)
            yield {"all": Reading(counted / count), "secrets": Reading(asked / count)}


def outage(counts, rounds):
    """With so many notes waiting and nobody at the service's port; keys begin with the number."""
    with Sender() as sender:
        for _ in range(rounds):
            costs = [(count, _without_service(sender, count)) for count in counts]
            yield {(count, key): reading for count, figures in costs for key, reading in figures.items()}


def _without_service(sender, count):
    """The stall in one minute, and the cost of another, in which nobody asks."""
    sender.user.service.start()
    sender.user.put_notes(count)
    sender.user.service.stop()
    disk = DiskCount()
    program = sender.start(disk)
    desk.wait_until(sender.all_were_tried, PATIENCE, "the first tries")
    over = time.monotonic() + MINUTE
    figures = Stall(program.tray, sender.neighbour).until(lambda: time.monotonic() > over)
    cost = Cost(program, disk)
    time.sleep(MINUTE)
    figures |= cost.readings()
    if any(note["attempts"] < 3 for note in sender.user.home.list("outbox.json")):
        raise AssertionError("not every note was tried again every minute")
    program.quit()
    return figures
