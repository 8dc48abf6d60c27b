"""What the system reads about the bundle, checked on any machine.

bundle_test.py PROJECT
"""

import json
import pathlib
import plistlib
import re
import struct
import sys
import unittest

PROJECT = pathlib.Path(sys.argv.pop())
PACKAGING = PROJECT / "packaging/macos"


def property_list(name: str) -> dict:
    return plistlib.loads((PACKAGING / name).read_bytes())


class InfoTest(unittest.TestCase):
    info = property_list("Info.plist.in")

    def test_names_the_bundle_as_the_launch_agent_does(self):
        agent = (PROJECT / "ui/start_at_login.cpp").read_text(encoding="utf-8")
        self.assertIn(f'"{self.info["CFBundleIdentifier"]}"', agent)
        self.assertIn(f'/Contents/MacOS/{self.info["CFBundleExecutable"]}<', agent)
        self.assertEqual(self.info["CFBundleName"], "VELK Notewick")

    def test_is_an_agent_that_several_users_may_run_at_once(self):
        self.assertIs(self.info["LSUIElement"], True)
        self.assertNotIn("LSMultipleInstancesProhibited", self.info)

    def test_allows_plain_http_on_the_local_network_only(self):
        self.assertEqual(self.info["NSAppTransportSecurity"], {"NSAllowsLocalNetworking": True})

    def test_is_for_the_system_that_it_is_built_for(self):
        presets = json.loads((PROJECT / "CMakePresets.json").read_text(encoding="utf-8"))
        macos = next(each for each in presets["configurePresets"] if each["name"] == "macos")
        target = macos["cacheVariables"]["CMAKE_OSX_DEPLOYMENT_TARGET"]
        self.assertEqual(self.info["LSMinimumSystemVersion"], target)
        self.assertIn(f"oldest={target}\n", (PACKAGING / "check-bundle").read_text())
        self.assertEqual(macos["cacheVariables"]["CMAKE_OSX_ARCHITECTURES"], "arm64;x86_64")

    def test_says_why_it_asks(self):
        for key in ("NSAccessibility", "NSAppleEvents", "NSLocalNetwork"):
            self.assertTrue(self.info[key + "UsageDescription"])


class NoticesTest(unittest.TestCase):
    def test_name_every_library_that_is_compiled_in(self):
        notices = (PACKAGING / "Notices.txt").read_text(encoding="utf-8")
        declared = (PROJECT / "cmake/macos-dependencies.cmake").read_text(encoding="utf-8")
        libraries = re.findall(r"https://(github.com/[^/]+/\w+)", declared.partition("if(BUILD_TESTING)")[0])
        self.assertEqual(len(libraries), 3)
        for library in libraries:
            self.assertIn(f"({library})", notices)


class EntitlementsTest(unittest.TestCase):
    def test_ask_for_no_exception_and_have_no_comments_which_the_system_does_not_read(self):
        self.assertEqual(property_list("Notewick.entitlements"), {"com.apple.security.app-sandbox": False})
        self.assertNotIn(b"<!--", (PACKAGING / "Notewick.entitlements").read_bytes())


class IconTest(unittest.TestCase):
    def test_has_the_size_of_the_largest_icon(self):
        header = (PACKAGING / "icon.png").read_bytes()[:24]
        self.assertEqual(struct.unpack(">II", header[16:24]), (1024, 1024))


if __name__ == "__main__":
    unittest.main()
