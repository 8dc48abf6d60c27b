"""What the scripts for Macs do when a tool of the system is busy, with stand-ins for the tools.

scripts_test.py PROJECT
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

PROJECT = pathlib.Path(sys.argv.pop())


class DiskImageTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        (self.folder / "tools").mkdir()
        (self.folder / "A.app").mkdir()
        self.tool("ditto", 'cp -R "$1" "$2"')
        self.tool("codesign", "")
        self.tool("sleep", "")

    def tool(self, name: str, lines: str):
        path = self.folder / "tools" / name
        path.write_text(f"#!/bin/bash\n{lines}\n")
        path.chmod(0o755)

    def is_made(self, busy: int) -> bool:
        """Whether the script makes an image where the system finds it busy so many times."""
        tries = self.folder / "tries"
        self.tool("hdiutil", f'echo >>"{tries}"; [ "$(wc -l <"{tries}")" -gt {busy} ] && touch "${{@: -1}}"')
        image = self.folder / "A.dmg"
        made = subprocess.run(
            [PROJECT / "packaging/macos/make-disk-image", self.folder / "A.app", image],
            env={**os.environ, "PATH": f"{self.folder}/tools:{os.environ['PATH']}"},
            timeout=60,
            check=False,
        )
        self.assertEqual(made.returncode == 0, image.exists())
        return image.exists()

    def test_is_made_although_the_system_finds_it_busy_at_first(self):
        self.assertTrue(self.is_made(busy=4))

    def test_is_given_up_after_five_tries(self):
        self.assertFalse(self.is_made(busy=5))


if __name__ == "__main__":
    unittest.main()
