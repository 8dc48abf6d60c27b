"""The lists of what the packages consist of and need."""

import json
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
FILES = ("tools/components", "CMakeLists.txt", "cmake/macos-dependencies.cmake")


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


class ComponentsTest(unittest.TestCase):
    """The script in a project that a test may change."""

    def setUp(self):
        self.root = Path(self.enterContext(tempfile.TemporaryDirectory()))
        for name in FILES:
            (self.root / name).parent.mkdir(exist_ok=True)
            shutil.copy(PROJECT / name, self.root / name)

    def run_script(self, *arguments):
        return subprocess.run(
            [self.root / "tools" / "components", *arguments], capture_output=True, text=True
        )

    def listed(self, *arguments):
        ended = self.run_script(*arguments)
        self.assertEqual((ended.returncode, ended.stderr), (0, ""))
        found = json.loads(ended.stdout)
        self.assertEqual((found["bomFormat"], found["specVersion"]), ("CycloneDX", "1.5"))
        references = [part["bom-ref"] for part in found["components"]]
        self.assertEqual(found["dependencies"][0]["dependsOn"], references)
        self.assertEqual(self.run_script(*arguments).stdout, ended.stdout)
        return found

    def package_that_needs(self, depends):
        control = self.root / "contents" / "DEBIAN" / "control"
        control.parent.mkdir(parents=True)
        control.write_text(
            "Package: notewick\nVersion: 1.2~3\nArchitecture: amd64\nMaintainer: Dana <dana@example.org>\n"
            f"Description: a test\nDepends: {depends}\n"
        )
        output_of("dpkg-deb", "--build", "--root-owner-group", self.root / "contents", self.root / "a.deb")
        return self.root / "a.deb"

    def test_a_debian_package_consists_of_what_it_needs_and_what_is_compiled_in(self):
        found = self.listed("debian", self.package_that_needs("libc6 (>= 2.34), dpkg | cdebootstrap"))
        self.assertEqual(found["metadata"]["component"]["version"], "1.2~3")
        self.assertEqual(
            {part["name"]: part["version"] for part in found["components"]},
            {
                name: output_of("dpkg-query", "-W", "-f", "${Version}", name)
                for name in ("nlohmann-json3-dev", "libexpected-dev", "libc6", "dpkg")
            },
        )

    def test_a_package_that_needs_what_is_not_installed_is_refused(self):
        ended = self.run_script("debian", self.package_that_needs("libc6, no-such-library1"))
        self.assertEqual((ended.returncode, ended.stdout), (1, ""))
        self.assertIn("no-such-library1 is not installed", ended.stderr)

    def test_the_disk_image_consists_of_what_is_fetched_for_it_and_not_for_its_tests(self):
        found = self.listed("macos")
        self.assertEqual([part["name"] for part in found["components"]], ["utf8proc", "expected", "json"])
        declared = (PROJECT / "cmake/macos-dependencies.cmake").read_text(encoding="utf-8")
        for part in found["components"]:
            pin = part.get("hashes") or part["pedigree"]["commits"]
            self.assertIn(pin[0].get("content") or pin[0]["uid"], declared)
            self.assertIn(f"# {part['version']}\n", declared)

    def test_a_library_that_is_declared_in_another_way_is_refused(self):
        path = self.root / "cmake/macos-dependencies.cmake"
        path.write_text("FetchContent_Declare(more GIT_TAG main)\n" + path.read_text(encoding="utf-8"))
        ended = self.run_script("macos")
        self.assertEqual(ended.returncode, 1)
        self.assertIn("in a way that is not known here", ended.stderr)


if __name__ == "__main__":
    unittest.main()
