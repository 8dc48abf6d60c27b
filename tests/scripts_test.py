#!/usr/bin/env python3
"""Proves that the scripts of this folder that check the sources fail when they should."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

TESTS = pathlib.Path(__file__).parent
ORDERLY = "#!/bin/bash\nset -euo pipefail\necho\n"


class ScriptTest(unittest.TestCase):
    """A project that holds nothing but one of the scripts."""

    script = ""

    def setUp(self):
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.root = folder / "project"
        self.commands = folder / "commands"
        self.put(self.script, (TESTS.parent / self.script).read_text(encoding="utf-8"))

    def put(self, path, text, folder=None):
        file = (folder or self.root) / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")
        file.chmod(0o755)

    def replace_command(self, name, commands):
        """Lets the script find these commands under the name of a program."""
        self.put(name, f"#!/bin/sh\n{commands}\n", self.commands)

    def run_script(self, *arguments, **variables):
        environment = {**os.environ, "PATH": f"{self.commands}:{os.environ['PATH']}", **variables}
        return subprocess.run(
            [self.root / self.script, *arguments], env=environment, timeout=60, capture_output=True, text=True
        )

    def assert_refuses(self, message, *arguments):
        ended = self.run_script(*arguments)
        self.assertNotEqual(ended.returncode, 0)
        self.assertIn(message, ended.stdout + ended.stderr)

    def assert_accepts(self, *arguments):
        ended = self.run_script(*arguments)
        self.assertEqual(ended.returncode, 0, ended.stderr)


class FormatTest(ScriptTest):
    script = "tests/check_format"

    def setUp(self):
        super().setUp()
        for name in (".clang-format", "pyproject.toml"):
            shutil.copy(TESTS.parent / name, self.root)
        subprocess.run(["git", "init", "--quiet", self.root], check=True)

    def track(self, path, text):
        self.put(path, text)
        subprocess.run(["git", "-C", self.root, "add", path], check=True)

    def test_a_source_out_of_form_is_refused_also_without_a_suffix(self):
        for path, orderly, careless, complaint in [
            ("platform/macos/b.mm", "int b = 1;\n", "int  b=1;\n", "b.mm"),
            ("tests/b.py", "b = 1\n", "b=1\n", "would reformat " + str(self.root / "tests/b.py")),
            ("tools/count-lines", "b = 1\n", "b=1\n", str(self.root / "tools/count-lines")),
        ]:
            self.track("model/a.cpp", "int a = 1;\n")
            self.track(path, orderly)
            self.assert_accepts()
            self.track(path, careless)
            self.assert_refuses(complaint)
            self.track(path, orderly)

    def test_a_project_without_sources_is_refused(self):
        self.assert_refuses("There is no source to check.")

    def test_a_list_that_git_refuses_or_breaks_off_is_refused(self):
        self.track("model/a.cpp", "int a = 1;\n")
        for listed, complaint in [
            ("", "detected dubious ownership"),
            ("model/a.cpp", "cannot read the index"),
        ]:
            self.replace_command("git", f"echo {listed}; echo '{complaint}' >&2; exit 128")
            self.assert_refuses(complaint)


class ShellTest(ScriptTest):
    script = "tests/check_shell"

    def test_orderly_scripts_are_fine(self):
        self.put("run", ORDERLY)
        self.put("tools/part.sh", "# shellcheck shell=bash\necho\n")
        self.assert_accepts()

    def test_a_careless_script_is_refused(self):
        for text, complaint in [
            (ORDERLY + "cd $1\n", "SC2086"),
            ("#!/bin/bash\nset -eu\necho\n", "tools/one: does not set -uo pipefail"),
        ]:
            self.put("tools/one", text)
            self.assert_refuses(complaint)

    def test_a_search_that_finds_nothing_or_fails_is_refused(self):
        for commands, complaint in [
            ("", "There is no script to check."),
            ("echo tests/check_shell; echo 'permission denied' >&2; exit 1", "permission denied"),
        ]:
            self.replace_command("find", commands)
            self.assert_refuses(complaint)


class InstallTest(ScriptTest):
    script = "tools/install-packages"

    def setUp(self):
        super().setUp()
        self.put("tools/packages.txt", "build base-files\n")

    def test_nothing_is_done_where_all_is_installed(self):
        self.replace_command("apt-get", "echo asked for >&2; exit 1")
        self.assert_accepts("build")

    def test_a_purpose_that_has_no_packages_is_refused(self):
        self.assert_refuses("There are no packages for: tset", "tset")


class WorkflowTest(unittest.TestCase):
    def test_every_script_that_a_workflow_runs_is_there(self):
        workflows = list(TESTS.parent.glob(".github/workflows/*.yml"))
        text = "\n".join(path.read_text(encoding="utf-8") for path in workflows)
        scripts = set(re.findall(r"(?<![\w/-])(?:packaging|tests|tools)/[\w/-]+(?![\w.])", text))
        self.assertIn("tools/package", scripts)
        self.assertEqual({each for each in scripts if not os.access(TESTS.parent / each, os.X_OK)}, set())


class RunTest(ScriptTest):
    script = "run"

    def setUp(self):
        super().setUp()
        for tool in ("tools/install-packages", "tools/build"):
            self.put(tool, ORDERLY)
        for program in ("build/release/notewick", "tools/demo", "tools/run-with-local-service"):
            self.put(program, f"#!/bin/sh\necho runs {program}\n")

    def assert_runs(self, program, display=":0"):
        folders = {"XDG_CONFIG_HOME": str(self.root / "own"), "XDG_CONFIG_DIRS": f"/nowhere:{self.root}/all"}
        ended = self.run_script(**folders, DISPLAY=display, WAYLAND_DISPLAY="")
        self.assertIn(f"runs {program}\n", ended.stdout, ended.stderr)

    def test_the_program_alone_where_a_service_is_configured_for_the_user_or_for_all(self):
        for folder in ("own", "all"):
            settings = self.root / folder / "VELK/Notewick.ini"
            self.put(settings, "[General]\nVELKUserEmail=a@example.org\n")
            self.assert_runs("tools/run-with-local-service")
            self.assert_runs("tools/demo", display="")
            self.put(settings, "[General]\nVELKBaseURL=https://velk.example\n")
            self.assert_runs("build/release/notewick")
            settings.unlink()


if __name__ == "__main__":
    unittest.main()
