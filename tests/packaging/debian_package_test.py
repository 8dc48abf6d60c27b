"""The Debian package, made and unpacked: what is in it, what it asks for, and that its program runs.

debian_package_test.py CPACK_CONFIGURATION
"""

import gzip
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CONFIGURATION = sys.argv.pop(1)
NAME = "tools.velk.notewick"
PROGRAMS = ["notewick", "notewick-doctor"]
ICONS = "usr/share/icons/hicolor"
SIZES = [16, 22, 24, 32, 48, 64, 128, 256, 512]
DOCUMENTS = "usr/share/doc/notewick"


def output_of(*command):
    """What it says on both streams; fails when it does."""
    ended = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=60)
    if ended.returncode != 0:
        raise AssertionError(f"{command[0]} fails: {ended.stdout}")
    return ended.stdout


class DebianPackage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        output_of("cpack", "--config", CONFIGURATION, "-B", folder)
        (cls.package,) = folder.glob("notewick_*.deb")
        cls.root = folder / "root"
        output_of("dpkg-deb", "--extract", cls.package, cls.root)

    def field(self, name):
        return output_of("dpkg-deb", "--field", self.package, name)

    def unpacked(self, path):
        return gzip.decompress((self.root / path).read_bytes()).decode("utf-8")

    def test_holds_what_a_desktop_asks_for_and_nothing_else(self):
        files = {str(path.relative_to(self.root)) for path in self.root.rglob("*") if path.is_file()}
        self.assertEqual(
            files,
            {f"usr/bin/{program}" for program in PROGRAMS}
            | {f"usr/share/man/man1/{program}.1.gz" for program in PROGRAMS}
            | {f"{ICONS}/{size}x{size}/apps/{NAME}.png" for size in SIZES}
            | {
                f"{ICONS}/scalable/apps/{NAME}.svg",
                f"{ICONS}/symbolic/apps/{NAME}-symbolic.svg",
                f"usr/share/applications/{NAME}.desktop",
                f"usr/share/metainfo/{NAME}.metainfo.xml",
                f"{DOCUMENTS}/changelog.gz",
                f"{DOCUMENTS}/copyright",
            },
        )

    def test_debians_own_checker_finds_nothing_to_warn_of(self):
        self.assertNotIn("notewick:", output_of("lintian", "--fail-on", "error,warning", self.package))

    def test_its_desktop_entry_is_valid_and_starts_the_program(self):
        entry = self.root / f"usr/share/applications/{NAME}.desktop"
        self.assertEqual(output_of("desktop-file-validate", entry), "")
        self.assertIn("\nExec=notewick\n", entry.read_text(encoding="utf-8"))
        self.assertIn("https://", output_of(self.root / "usr/bin/notewick", "--selftest"))

    def test_software_centres_and_its_changelog_tell_its_version(self):
        version = self.field("Version").strip()
        about = self.root / f"usr/share/metainfo/{NAME}.metainfo.xml"
        self.assertIn("successful", output_of("appstreamcli", "validate", "--no-net", about))
        self.assertIn(f'<release version="{version}"', about.read_text(encoding="utf-8"))
        self.assertTrue(self.unpacked(f"{DOCUMENTS}/changelog.gz").startswith(f"notewick ({version}) "))

    def test_its_manual_pages_can_be_shown_without_a_warning(self):
        for program in PROGRAMS:
            page = self.root / f"usr/share/man/man1/{program}.1.gz"
            shown = output_of("man", "--warnings", "--encoding=ascii", "--local-file", page)
            self.assertIn("SYNOPSIS", shown)
            self.assertNotIn("warning", shown)

    def test_its_icons_have_the_sizes_of_their_folders(self):
        for size in SIZES:
            header = (self.root / f"{ICONS}/{size}x{size}/apps/{NAME}.png").read_bytes()[16:24]
            self.assertEqual(header, size.to_bytes(4, "big") * 2)

    def test_carries_the_notices_of_what_is_compiled_into_it(self):
        notices = (self.root / f"{DOCUMENTS}/copyright").read_text(encoding="utf-8")
        for holder in ("The Notewick authors", "Niels Lohmann", "Simon Brand", "Ilia Bozhinov"):
            self.assertIn(holder, notices)

    def test_asks_for_the_libraries_it_uses_and_brings_no_gnome_for_its_tray(self):
        needed = self.field("Depends")
        libraries = ("libqt6widgets6", "libqt6network6", "libqt6dbus6", "libcurl4", "libssl3", "libxcb1")
        for package in (*libraries, "xdg-utils", "ca-certificates"):
            self.assertIn(package, needed)
        self.assertIn("gnome-shell-extension-appindicator", self.field("Suggests"))
        self.assertNotIn("gnome-shell", needed + self.field("Recommends"))


if __name__ == "__main__":
    unittest.main()
