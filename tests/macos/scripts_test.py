"""What the scripts for Macs do when a tool of the system is busy, with stand-ins for the tools.

scripts_test.py PROJECT
"""

import os
import pathlib
import sqlite3
import subprocess
import sys
import tempfile
import unittest

PROJECT = pathlib.Path(sys.argv.pop())


class ScriptTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        self.tools = self.folder / "tools"
        self.tools.mkdir()
        self.tool("sleep", "")

    def tool(self, name: str, lines: str):
        """A stand-in that writes down each call before it does `lines`."""
        path = self.tools / name
        path.write_text(f'#!/bin/bash\necho "{name} $*" >>"{self.folder}/calls"\n{lines}\n')
        path.chmod(0o755)

    def busy(self, name: str, times: int, then: str):
        """A stand-in that fails so many times before it does `then`."""
        self.tool(name, f'[ "$(grep -c "^{name} " "{self.folder}/calls")" -gt {times} ] || exit 1\n{then}')

    def run_script(self, script: str, *arguments, **variables) -> bool:
        """Whether the script succeeds."""
        environment = {**os.environ, "PATH": f"{self.tools}:{os.environ['PATH']}", **variables}
        ran = subprocess.run([PROJECT / script, *arguments], env=environment, timeout=60, check=False)
        return ran.returncode == 0


class DiskImageTest(ScriptTest):
    def make(self) -> bool:
        (self.folder / "A.app").mkdir()
        self.tool("ditto", 'cp -R "$1" "$2"')
        self.tool("codesign", "")
        return self.run_script(
            "packaging/macos/make-disk-image", self.folder / "A.app", self.folder / "A.dmg"
        )

    def test_is_created_although_the_system_finds_it_busy_at_first(self):
        self.busy("hdiutil", 4, 'touch "${@: -1}"')
        self.assertTrue(self.make())
        self.assertTrue((self.folder / "A.dmg").exists())

    def test_is_given_up_after_five_tries(self):
        self.busy("hdiutil", 5, 'touch "${@: -1}"')
        self.assertFalse(self.make())


class LeaveTest(ScriptTest):
    RUN = (
        f'exec {sys.executable} -c "import sqlite3, sys; '
        'sqlite3.connect(sys.argv[-2], isolation_level=None).execute(sys.argv[-1])" "$@"'
    )

    def give(self, *programs: str) -> bool:
        database = str(self.folder / "TCC.db")
        with sqlite3.connect(database) as self.database:
            self.database.execute(
                "CREATE TABLE access (service, client, client_type, auth_value, auth_reason,"
                " auth_version, indirect_object_identifier, flags)"
            )
        return self.run_script("tests/macos/let_read_windows", *programs, NOTEWICK_ACCESS_DATABASE=database)

    def test_is_given_although_the_database_is_busy_at_first(self):
        self.busy("sqlite3", 4, self.RUN)
        self.assertTrue(self.give("/a b/program", "/bin/bash"))
        rows = self.database.execute("SELECT client FROM access WHERE auth_value = 2 ORDER BY client")
        self.assertEqual(list(rows), [("/a b/program",), ("/bin/bash",)])

    def test_is_given_up_after_five_tries(self):
        self.busy("sqlite3", 5, self.RUN)
        self.assertFalse(self.give("/bin/bash"))


if __name__ == "__main__":
    unittest.main()
