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

    def tool(self, name: str, lines: str):
        """A stand-in that writes down each call before it does `lines`."""
        path = self.tools / name
        path.write_text(f'#!/bin/bash\necho "{name} $*" >>"{self.folder}/calls"\n{lines}\n')
        path.chmod(0o755)

    def busy(self, name: str, times: int, then: str):
        """A stand-in that fails so many times before it does `then`."""
        self.tool(name, f'[ "$(grep -c "^{name} " "{self.folder}/calls")" -gt {times} ] || exit 1\n{then}')

    def calls(self, name: str) -> int:
        lines = (self.folder / "calls").read_text().splitlines()
        return sum(line.startswith(name + " ") for line in lines)

    def run_script(self, script: str, *arguments, **variables) -> subprocess.CompletedProcess:
        environment = {**os.environ, "PATH": f"{self.tools}:{os.environ['PATH']}", **variables}
        return subprocess.run([PROJECT / script, *arguments], env=environment, capture_output=True,
                              text=True, timeout=60, check=False)


class DiskImageTest(ScriptTest):
    def setUp(self):
        super().setUp()
        (self.folder / "A.app").mkdir()
        self.tool("ditto", 'cp -R "$1" "$2"')
        self.tool("codesign", "")
        self.tool("sleep", "")

    def make(self) -> subprocess.CompletedProcess:
        return self.run_script("packaging/macos/make-disk-image", self.folder / "A.app",
                               self.folder / "A.dmg")

    def test_is_created_although_the_system_finds_it_busy_at_first(self):
        self.busy("hdiutil", 3, 'touch "${@: -1}"')
        made = self.make()
        self.assertEqual(made.returncode, 0, made.stderr)
        self.assertTrue((self.folder / "A.dmg").exists())
        self.assertEqual(self.calls("hdiutil"), 4)

    def test_is_given_up_after_five_tries(self):
        self.tool("hdiutil", "exit 1")
        made = self.make()
        self.assertNotEqual(made.returncode, 0)
        self.assertEqual(self.calls("hdiutil"), 5)


class LeaveTest(ScriptTest):
    def setUp(self):
        super().setUp()
        self.database = self.folder / "TCC.db"
        with sqlite3.connect(self.database) as database:
            database.execute("CREATE TABLE access (service, client, client_type, auth_value, auth_reason,"
                             " auth_version, indirect_object_identifier, flags)")
        self.tool("sleep", "")

    def give(self) -> subprocess.CompletedProcess:
        return self.run_script("tests/macos/let_read_windows", "/bin/bash", "/a b/program",
                               NOTEWICK_ACCESS_DATABASE=str(self.database))

    def clients(self) -> list[str]:
        with sqlite3.connect(self.database) as database:
            rows = database.execute("SELECT client FROM access WHERE auth_value = 2 ORDER BY client")
            return [client for (client,) in rows]

    def test_is_given_although_the_database_is_busy_at_first(self):
        self.busy("sqlite3", 2, f'exec {sys.executable} -c "import sqlite3, sys; '
                  'sqlite3.connect(sys.argv[-2], isolation_level=None).execute(sys.argv[-1])" "$@"')
        given = self.give()
        self.assertEqual(given.returncode, 0, given.stderr)
        self.assertEqual(self.clients(), ["/a b/program", "/bin/bash"])

    def test_is_given_up_after_five_tries(self):
        self.tool("sqlite3", "exit 1")
        self.assertNotEqual(self.give().returncode, 0)
        self.assertEqual(self.calls("sqlite3"), 5)


if __name__ == "__main__":
    unittest.main()
