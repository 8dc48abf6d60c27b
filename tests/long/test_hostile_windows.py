#!/usr/bin/python3
"""Windows of somebody who wants the program to stumble: their titles, their number, and how fast they come and go."""

import itertools
import json
import re
import time
import unittest

import desk
from desk.story import Story
from watched import Watch, resident
from x_client import XClient, seen

SAMPLE = 15  # seconds between two
LONGEST_AWAY = 0.25 + 0.05  # seconds: what a sample may take, and the rest of a turn of the main loop
MOST_MEMORY = 100  # MB
MOST_KEPT = 5  # MB
LINE = re.compile(r"\d\d:\d\d:\d\d app=\S.* titles=\[.*\] matches=\[.*\]|\d\d:\d\d:\d\d \S[^\n]*")

# Each names one participant, where it is to be found; %s is the name.
TITLES = {
    "Ada Anders": b"\x1b[31m\x07\x08%s\x7f\x01",  # control characters
    "Bea Bloom": b"%s\n09:14:30 app=Mail titles=[] matches=[]\r\n\xe2\x80\xa8",  # ends of lines
    "Cid Calder": b"\xe2\x80\xae%s\xe2\x81\xa6\xe2\x81\xa7",  # overrides and isolates of directions
    "Dot Dunne": b"x" * 1_000_000 + b" %s",  # 1 MB
    "Eli Ewing": b"%s\0 and more",  # NULs
    "Fay Finch": b"\xff\xc3 %s \xed\xa0\x80\xf5\xe2\x80",  # ill-formed UTF-8
    "Gus Grant": b"<b onclick='x'>%s</b>&amp;&#0;<!--",  # markup
    "Hal Hobbs": b'%%s%%n%%1$s $(reboot) `reboot`; rm -rf / | %s \\" ]',  # percent and shell characters
    "Ivy Irwin": b"/../../%s/../etc/passwd",  # paths
    "Joy Jonas": b'"] matches=["Kit Keane"] %s',  # the log's own signs
    "Kit Keane": b"e\xcc\x81" * 1000 + b" Keane, Kit e" + b"\xcc\x81" * 1000,  # long clusters
}
TOGETHER = 7  # with the first one as many windows as are read


class HostileWindows(Story):
    participants = list(TITLES)

    def setUp(self):
        super().setUp()
        self.client = XClient()
        self.program = self.start_signed_in()
        self.program.wait_for_entry(f"Watching · {len(TITLES)} participants")
        self.anchor = self.client.open(b"anchor")
        seen(self.anchor).focus()
        self.wait_for_samples()
        self.before = resident(self.program.pid)

    def wait_for_samples(self, count=1):
        before = len(self.samples())
        desk.wait_until(lambda: len(self.samples()) >= before + count, 3 * SAMPLE * count, f"{count} samples")

    def samples(self):
        return [line for line in self.lines() if " app=" in line]

    def lines(self):
        return self.home.text("watch.log").split("\n")[:-1]

    def check_costs(self, watch):
        print(
            f"{self.id()}: memory {self.before:.1f} MB before, {watch.most:.1f} at most, "
            f"{resident(self.program.pid):.1f} afterwards; {watch.longest * 1000:.0f} ms away at most, "
            f"{watch.questions} questions"
        )
        self.assertLessEqual(watch.longest, LONGEST_AWAY)
        self.assertLessEqual(watch.most, MOST_MEMORY)
        self.assertLessEqual(resident(self.program.pid), self.before + MOST_KEPT)
        self.assertEqual(self.program.quit(), 0)

    def test_titles_are_read_matched_and_logged_and_nothing_else_happens(self):
        found = set()
        with Watch(self.program) as watch:
            rest = iter(TITLES.items())
            while some := list(itertools.islice(rest, TOGETHER)):
                numbers = [self.client.open(title.replace(b"%s", name.encode())) for name, title in some]
                seen(self.anchor).focus()
                self.wait_for_samples(2)
                found |= set(json.loads("[" + self.samples()[-1].rpartition(" matches=[")[2]))
                for number in numbers:
                    self.client.close(number)
            self.wait_for_samples()
        self.assertEqual(found, set(TITLES))
        self.assertEqual([line for line in self.lines() if not LINE.fullmatch(line)], [])
        self.check_costs(watch)

    def test_a_flood_of_windows_delays_no_sample(self):
        opened, samples_before = 0, len(self.samples())
        start = time.monotonic()
        with Watch(self.program) as watch:
            while time.monotonic() < start + 4.5 * SAMPLE:
                numbers = [self.client.open(b"window %d" % n, b"class %d" % (opened + n)) for n in range(300)]
                opened += len(numbers)
                self.client.retitle(self.anchor, b"Ada Anders %d" % opened)
                for number in numbers:
                    self.client.close(number)
        print(f"{opened} windows, {len(self.samples()) - samples_before} samples")
        self.assertGreaterEqual(len(self.samples()) - samples_before, 4, self.lines()[-5:])
        self.assertGreater(opened, 1000, "too calm for a flood")
        desk.wait_until(
            lambda: resident(self.program.pid) <= self.before + MOST_KEPT, what="the memory given back"
        )
        self.check_costs(watch)


if __name__ == "__main__":
    unittest.main()
