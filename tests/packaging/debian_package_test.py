"""The Debian package, made and unpacked: what is in it, what it asks for, and that its program runs.

debian_package_test.py CPACK_CONFIGURATION
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CONFIGURATION = sys.argv.pop(1)
NAME = "tools.velk.notewick"


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True, timeout=60).stdout


class DebianPackage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        output_of("cpack", "--config", CONFIGURATION, "-B", folder.name)
        (cls.package,) = Path(folder.name).glob("notewick_*.deb")
        cls.root = Path(folder.name, "root")
        output_of("dpkg-deb", "--extract", cls.package, cls.root)

    def field(self, name):
        return output_of("dpkg-deb", "--field", self.package, name)

    def test_holds_the_program_its_desktop_entry_and_its_icon_and_nothing_else(self):
        files = {str(path.relative_to(self.root)) for path in self.root.rglob("*") if path.is_file()}
        self.assertEqual(
            files,
            {
                "usr/bin/notewick",
                f"usr/share/applications/{NAME}.desktop",
                f"usr/share/icons/hicolor/scalable/apps/{NAME}.svg",
            },
        )

    def test_its_desktop_entry_is_valid_and_starts_the_program(self):
        entry = self.root / f"usr/share/applications/{NAME}.desktop"
        self.assertEqual(output_of("desktop-file-validate", entry), "")
        self.assertIn("\nExec=notewick\n", entry.read_text(encoding="utf-8"))

    def test_asks_for_the_libraries_it_uses(self):
        needed = self.field("Depends")
        libraries = ("libqt6widgets6", "libqt6network6", "libqt6dbus6", "libcurl4", "libssl3", "libxcb1")
        for package in (*libraries, "xdg-utils", "ca-certificates"):
            self.assertIn(package, needed)

    def test_names_what_gives_gnome_a_tray_without_bringing_gnome(self):
        self.assertIn("gnome-shell-extension-appindicator", self.field("Suggests"))
        self.assertNotIn("gnome-shell", self.field("Depends") + self.field("Recommends"))

    def test_its_program_runs(self):
        self.assertIn("https://", output_of(self.root / "usr/bin/notewick", "--selftest"))


if __name__ == "__main__":
    unittest.main()
