"""What a release says of itself, made from a changelog."""

import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[2] / "tools" / "changelog"
RELEASED = """\
# Changelog

## [1.2.0] - 2026-03-02

### Added

- Counts the minutes of a piece of work that goes on, and on, and on, until somebody else has the
  screen for ten minutes.
- Asks.

## [1.1.9] - 2026-02-01

- Begins.
"""


UNRELEASED = RELEASED.replace("2026-03-02", "Unreleased")


class ChangelogTest(unittest.TestCase):
    def setUp(self):
        self.root = Path(self.enterContext(tempfile.TemporaryDirectory()))
        (self.root / "tools").mkdir()
        shutil.copy(SCRIPT, self.root / "tools")
        (self.root / "CMakeLists.txt").write_text("project(notewick VERSION 1.2.0 LANGUAGES CXX)\n")

    def run_script(self, changelog, *arguments):
        (self.root / "CHANGELOG.md").write_text(changelog)
        return subprocess.run(
            [self.root / "tools" / "changelog", *arguments],
            env={**os.environ, "SOURCE_DATE_EPOCH": "86400"},
            capture_output=True,
            text=True,
        )

    def made(self, changelog, *arguments):
        ended = self.run_script(changelog, *arguments)
        self.assertEqual((ended.returncode, ended.stderr), (0, ""))
        return ended.stdout

    def assert_refuses(self, reason, changelog, *arguments):
        ended = self.run_script(changelog, *arguments)
        self.assertEqual((ended.returncode, ended.stdout), (1, ""))
        self.assertIn(reason, ended.stderr)

    def test_the_notes_are_the_section_of_the_tag(self):
        notes = self.made(RELEASED, "notes", "v1.2.0")
        self.assertTrue(notes.startswith("### Added\n\n- Counts"), notes)
        self.assertTrue(notes.endswith("- Asks.\n"), notes)

    def test_a_tag_or_a_changelog_that_does_not_fit_is_refused(self):
        older = RELEASED[RELEASED.index("## [1.1.9]") :]
        empty = "## [1.2.0] - 2026-03-02\n\n" + older
        for tag in ("v1.1.9", "1.2.0", ""):
            self.assert_refuses("the project's version 1.2.0", RELEASED, "notes", tag)
        self.assert_refuses("no section for v1.2.0", older, "notes", "v1.2.0")
        self.assert_refuses("unreleased", UNRELEASED, "notes", "v1.2.0")
        self.assert_refuses("says nothing", empty, "notes", "v1.2.0")
        self.assert_refuses("no heading", RELEASED.replace("2026-03-02", "soon"), "debian")
        self.assert_refuses("names no release", "# Changelog\n", "debian")

    def test_debians_changelog_has_an_entry_for_each_release(self):
        self.assertEqual(
            self.made(RELEASED, "debian"),
            "notewick (1.2.0) bookworm; urgency=medium\n\n"
            "  * Counts the minutes of a piece of work that goes on, and on, and on, until\n"
            "    somebody else has the screen for ten minutes.\n"
            "  * Asks.\n\n"
            " -- Notewick <notewick@velk.example>  Mon, 02 Mar 2026 00:00:00 +0000\n\n"
            "notewick (1.1.9) bookworm; urgency=medium\n\n"
            "  * Begins.\n\n"
            " -- Notewick <notewick@velk.example>  Sun, 01 Feb 2026 00:00:00 +0000\n",
        )

    def test_software_centres_are_told_of_a_development_that_is_unreleased(self):
        self.assertEqual(
            self.made(UNRELEASED, "metainfo"),
            '<release version="1.2.0" type="development" date="1970-01-02"/>\n'
            '<release version="1.1.9" type="stable" date="2026-02-01"/>\n',
        )


if __name__ == "__main__":
    unittest.main()
