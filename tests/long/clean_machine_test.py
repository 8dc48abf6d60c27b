#!/usr/bin/python3
"""The package on a machine that has nothing else: installed, used, upgraded, removed.

    clean_machine_test.py ROOT PACKAGE    ROOT is a minimal Debian 12; display, tray and buses are the session's

Runs in mounts of its own; NOTEWICK is chroot.
"""

import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from desk import notewick
from desk.local_service import CAPTURE
from desk.story import Story

ROOT, PACKAGE = (Path(argument) for argument in sys.argv[1:])
NEXT_VERSION = "99.0"
NOTE = "Called about rent"
WAITING = "1 note waiting to send to VELK"


def run(*command, **options):
    ended = subprocess.run(command, capture_output=True, text=True, timeout=1800, **options)
    if ended.returncode != 0:
        raise AssertionError(f"{command} fails: {ended.stdout}{ended.stderr}")
    return ended.stdout


def inside(*command):
    """Runs a command of the clean machine, without anything of the session."""
    path = "/usr/sbin:/usr/bin:/sbin:/bin"
    return run("chroot", ROOT, *command, env={"PATH": path, "DEBIAN_FRONTEND": "noninteractive"})


def install(package):
    """By its file, with what it depends on and nothing that it recommends."""
    (ROOT / "srv" / package.name).write_bytes(package.read_bytes())
    options = ("--yes", "--no-install-recommends", "--allow-downgrades")
    inside("apt-get", "install", *options, f"/srv/{package.name}")


def next_package():
    """The same package with a higher version."""
    folder = Path(tempfile.mkdtemp())
    run("dpkg-deb", "--raw-extract", PACKAGE, folder / "contents")
    control = folder / "contents" / "DEBIAN" / "control"
    version = run("dpkg-deb", "--field", PACKAGE, "Version").strip()
    control.write_text(control.read_text().replace(f"Version: {version}\n", f"Version: {NEXT_VERSION}\n"))
    run("dpkg-deb", "--build", "--root-owner-group", folder / "contents", folder / "next.deb")
    return folder / "next.deb"


def status():
    return inside("dpkg-query", "--show", "--showformat", "${db:Status-Abbrev}${Version}", "notewick")


class HomeInside(notewick.Home):
    """A home folder of the clean machine; its programs know it without the path to their root."""

    @property
    def environment(self):
        return {name: value.removeprefix(str(ROOT)) for name, value in super().environment.items()}


class CleanMachine(Story):
    @classmethod
    def setUpClass(cls):
        run("mount", "--bind", "/tmp", ROOT / "tmp")  # the sockets of the session
        run("mount", "-t", "proc", "proc", ROOT / "proc")
        inside("apt-get", "update")
        super().setUpClass()

    @classmethod
    def meet_a_new_user(cls):
        cls.forget_the_last_test()
        cls.home = HomeInside(ROOT / "home" / "dana")
        cls.home.point_at(cls.service.origin)

    @classmethod
    def start(cls, *arguments, **environment):
        return super().start(ROOT, "notewick", *arguments, **environment)

    def data(self):
        return {path: path.read_bytes() for path in self.home.support.iterdir()}

    def runs_what_is_installed(self, program):
        return os.path.samefile(f"/proc/{program.pid}/exe", ROOT / "usr/bin/notewick")

    def test_is_installed_used_upgraded_while_it_runs_and_removed_without_touching_the_users_data(self):
        install(PACKAGE)
        self.assertIn("https://", inside("notewick", "--selftest"))
        old = self.start_signed_in()
        self.service.fail(CAPTURE, status=503)
        old.widget.write_note(NOTE)
        old.wait_for_entry(WAITING)

        install(next_package())
        self.assertEqual(status(), f"ii {NEXT_VERSION}")
        self.assertTrue(os.readlink(f"/proc/{old.pid}/exe").endswith(" (deleted)"))
        old.wait_for_entry(WAITING)
        self.assertEqual(old.quit(), 0)

        new = self.start()
        new.wait_for_entry(WAITING)
        self.assertTrue(self.runs_what_is_installed(new))
        self.service.work_again()
        new.send_what_waits()
        self.service.wait_for_notes(NOTE)
        self.assertEqual(new.quit(), 0)

        data, settings = self.data(), self.home.settings.read_bytes()
        self.assertIn(self.home.support / "participants.json", data)
        for command in ("remove", "purge"):
            install(PACKAGE)  # purge does not know a package that was removed and left nothing
            inside("apt-get", command, "--yes", "notewick")
            self.assertEqual(list((ROOT / "usr").rglob("*notewick*")), [])
            self.assertEqual((self.data(), self.home.settings.read_bytes()), (data, settings))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
