#!/usr/bin/env python3
"""Proves that the checks of this folder fail when they should."""

import pathlib
import sys
import tempfile
import unittest
from unittest import mock

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import check_behaviour  # noqa: E402
import check_house  # noqa: E402


class HouseTest(unittest.TestCase):
    def setUp(self):
        self.root = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        for folder in check_house.CHECKED_FOLDERS:
            self.put(f"{folder}/some.h", "")
        self.put("app/main.cpp", "int main() {}\n")
        self.put("platform/ports.cpp", "")
        self.furnish({})

    def put(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def offences(self, path=None, text=""):
        """What is said of the house with this file, which is gone afterwards."""
        if path:
            self.put(path, text)
        if path and path.endswith(".cpp"):
            name = path.removesuffix(".cpp")
            self.put(f"tests/{name}_test.cpp", "")
            self.put(f"tests/{name}.cmake", f"{name}_test.cpp\n")
        found = list(check_house.offences(self.root))
        if path:
            (self.root / path).unlink()
        return found

    def assert_refused(self, path, text):
        found = self.offences(path, text)
        self.assertEqual([each.startswith(path) for each in found], [True], (path, text, found))

    def assert_fine(self, path, text):
        self.assertEqual(self.offences(path, text), [])

    def test_an_orderly_house_is_fine(self):
        self.assertEqual(self.offences(), [])

    def test_a_folder_without_sources_is_refused(self):
        for exception in check_house.UNTESTED:
            (self.root / exception).unlink()
        for folder in check_house.CHECKED_FOLDERS:
            (self.root / folder / "some.h").unlink()
            self.assertIn(f"{self.root / folder}: holds no source", "\n".join(self.offences()))
            self.put(f"{folder}/some.h", "")

    def test_toolkits_systems_and_clocks_are_refused(self):
        for code in [
            "QString text;",
            "xcb_connection_t* c;",
            "NSString* s;",
            "GVariant* v;",
            "auto t = std::chrono::system_clock::now();",
            "auto t = time(nullptr);",
            "auto t = std::time(nullptr);",
            'auto h = std::getenv("HOME");',
            "sleep(1);",
            "std::this_thread::sleep_for(s);",
            "std::ifstream file;",
            "std::thread t;",
            "#ifdef __APPLE__\n#endif",
            "AXIsProcessTrusted();",
        ]:
            self.assert_refused("model/a.cpp", code + "\n")

    def test_names_in_comments_and_texts_are_fine(self):
        self.assert_fine("model/a.cpp", '// a QString, time(0)\n/* NSString\n */ f("getenv");\n')
        self.assert_fine("ui/b.cpp", "QuickWidgetController c; x.time(1); auto n = localTime(t);\n")

    def test_system_headers_are_refused(self):
        for header in ["unistd.h", "thread", "ctime", "fstream", "QString", "xcb/xcb.h", "iostream"]:
            self.assert_refused("detect/a.cpp", f"#include <{header}>\n")
        self.assert_fine("detect/a.cpp", "#include <vector>\n#include <nlohmann/json.hpp>\n")

    def assert_knowledge(self, allowed, refused):
        """Each is a file, and the headers that it includes one at a time."""
        for path, *headers in refused:
            for header in headers:
                self.assert_refused(path, f'#include "{header}"\n')
        for path, *headers in allowed:
            for header in headers:
                self.assert_fine(path, f'#include "{header}"\n')

    def test_knowledge_goes_one_way(self):
        self.assert_knowledge(
            allowed=[
                ("model/a.cpp", "app/constants.h"),
                ("detect/a.cpp", "model/b.h"),
                ("client/a.cpp", "platform/clock.h"),
                ("ui/a.cpp", "client/b.h"),
                ("app/a.cpp", "ui/b.h"),
                ("app/entry.cpp", "app/app_delegate.h"),
                ("ui/delegate_menu.cpp", "app/app_delegate.h"),
            ],
            refused=[
                ("model/a.cpp", "detect/b.h", "platform/clock.h", "tests/support/world.h"),
                ("model/a.h", "client/b.h"),
                ("detect/a.cpp", "client/b.h"),
                ("client/a.cpp", "detect/b.h"),
                ("outbox/a.cpp", "ui/b.h"),
                ("ui/a.cpp", "app/entry.h", "platform/linux/views.h", "b.h"),
                ("ui/status_menu.cpp", "app/app_delegate.h"),
            ],
        )

    def furnish(self, rooms):
        """Makes this table the rooms of the front end for Linux, with every allowed arrow in use."""
        self.enterContext(mock.patch.object(check_house, "ROOMS", {"platform/linux": rooms}))
        for room, others in rooms.items():
            self.put(
                f"platform/linux/{room}/used.h",
                "".join(f'#include "platform/linux/{other}/used.h"\n' for other in others),
            )

    def test_knowledge_between_rooms_goes_one_way(self):
        self.furnish({"tray": ["looks"], "looks": []})
        linux = "platform/linux"
        self.assert_knowledge(
            allowed=[
                (f"{linux}/tray/a.cpp", f"{linux}/looks/used.h", f"{linux}/tray/a.h"),
                (f"{linux}/looks/a.cpp", "platform/menu.h", "generated.h"),
                (f"{linux}/views.h", f"{linux}/tray/used.h", "platform/posix/files.h"),
            ],
            refused=[
                (f"{linux}/looks/a.cpp", f"{linux}/tray/used.h"),
                (f"{linux}/tray/a.cpp", f"{linux}/views.h", "model/record.h"),
                (f"{linux}/tray/a.h", "platform/posix/files.h", "platform/macos/tray/a.h"),
                (f"{linux}/views.cpp", "ui/menu.h"),
            ],
        )

    def test_a_room_without_a_row_and_an_arrow_that_nothing_needs_are_refused(self):
        self.furnish({"tray": ["looks"], "looks": []})
        self.assert_refused("platform/linux/attic/a.h", "")
        found = self.offences("platform/linux/tray/used.h", "")
        self.assertEqual(found, ["platform/linux/tray: may know looks, and does not"])

    def test_rooms_that_know_each_other_in_a_circle_are_refused(self):
        self.furnish({"tray": ["looks"], "looks": ["tray"]})
        circle = "platform/linux: the rooms go round in a circle: "
        self.assertEqual(
            self.offences(), [f"{circle}tray knows looks knows tray", f"{circle}looks knows tray knows looks"]
        )

    def test_the_drawing_counts_rooms_arrows_and_floors(self):
        self.furnish({"tray": ["looks"], "looks": []})
        self.put("ui/delegate_menu.cpp", '#include "app/app_delegate.h"\n#include "ui/menu.h"\n')
        self.put("ui/menu.h", '#include "app/constants.h"\n#include "platform/menu.h"\n')
        lines = list(check_house.drawing(self.root))
        self.assertIn("2  platform/linux/tray: platform/linux/looks", lines)
        self.assertIn("3  app: ui", lines)
        self.assertEqual(lines[-1], "10 rooms, 3 arrows (1 of them to the ports), 3 floors")

    def test_a_crowded_folder_is_refused(self):
        for folder, most in [("platform/linux", 36), ("ui", 36), ("tests/support", 50)]:
            for i in range(len(list((self.root / folder).glob("*.*"))), most):
                self.put(f"{folder}/{i}.h", "")
            self.assertEqual(self.offences(), [])
            found = self.offences(f"{folder}/one_too_many.h")
            self.assertEqual(found, [f"{folder}: {most + 1} files, more than {most}"])

    def test_ports_know_plain_types_only(self):
        self.assert_refused("platform/clock.h", '#include "model/date.h"\n')
        self.assert_refused("platform/clock.h", "#include <QObject>\n")
        self.assert_fine("platform/clock.h", '#include <string>\n#include "platform/files.h"\n')

    def test_a_body_without_test_is_refused(self):
        self.put("model/a.cpp", "")
        self.assertEqual(self.offences(), ["model/a.cpp: has no tests/model/a_test.cpp"])

    def test_an_exception_without_file_is_refused(self):
        (self.root / "app/main.cpp").unlink()
        self.assertEqual(len(self.offences()), 1)

    def test_a_file_of_401_lines_is_refused(self):
        for path in ["platform/linux/a.cpp", "tests/desktop/session"]:
            self.assert_fine(path, "\n" * 400)
            self.assert_refused(path, "\n" * 401)

    def test_a_test_that_nobody_builds_is_refused(self):
        for path in ["tests/model/b_test.mm", "tests/desktop/test_b.py", "tests/b_test.py"]:
            self.assert_refused(path, "")

    def test_switched_off_tests_are_refused(self):
        self.assert_refused("tests/b.cpp", "TEST(A, " + "DISABLED_B) {}\n")


class BehaviourTest(unittest.TestCase):
    HEAD = "| What it does | Proof |\n|---|---|\n"

    def faults(self, *lines):
        return list(check_behaviour.faults(self.HEAD + "\n".join(lines), {"A", "b_test.py"}))

    def test_a_list_that_names_every_suite_is_fine(self):
        self.assertEqual(self.faults("| does this | `A` |", "| and that | `A` `b_test.py` |"), [])

    def test_suites_that_no_line_names_or_that_do_not_exist_are_reported(self):
        self.assertEqual(self.faults("| does this | `A` `X` `b_test.py` |"), ["line 3: there is no suite X"])
        self.assertEqual(self.faults("| does this | `A` |"), ["no line names the suite b_test.py"])

    def test_a_row_without_suite_or_words_is_reported(self):
        for row in ("| does this | A |", "| | `A` |", "| does this |"):
            found = self.faults("| all | `A` `b_test.py` |", row)
            self.assertEqual(found, ["line 4: needs a behaviour and a suite in back quotes"], row)

    def test_the_files_of_tests_are_found(self):
        names = check_behaviour.suites_of_folder(pathlib.Path(__file__).parent)
        self.assertIn("checks_test.py", names)
        self.assertNotIn("check_house.py", names)

    def test_the_suites_of_a_program_are_found(self):
        with tempfile.TemporaryDirectory() as folder:
            program = pathlib.Path(folder) / "program"
            listing = "Running main()\nSuite.\n  First\nOther.\n  Second.\n"
            program.write_text(f"#!/bin/sh\nprintf '{listing}'\n")
            program.chmod(0o755)
            self.assertEqual(check_behaviour.suites_of_program(str(program)), {"Suite", "Other"})


if __name__ == "__main__":
    unittest.main()
