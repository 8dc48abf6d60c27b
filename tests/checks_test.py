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
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        for folder in check_house.CHECKED_FOLDERS:
            self.put(f"{folder}/some.h", "")
        self.put("app/main.cpp", "int main() {}\n")
        self.put("platform/ports.cpp", "")
        self.furnish({})

    def put(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def put_test(self, name):
        self.put(f"tests/{name}_test.cpp", "")
        self.put(f"tests/{name}.cmake", f"{name}_test.cpp\n")

    def offences(self, path, text):
        """What is said against this file alone."""
        self.put(path, text)
        if path.endswith(".cpp"):
            self.put_test(path.removesuffix(".cpp"))
        return list(check_house.offences(self.root))

    def assert_refused(self, path, text):
        found = self.offences(path, text)
        self.assertEqual(len(found), 1, found)
        self.assertTrue(found[0].startswith(path), found)

    def assert_fine(self, path, text):
        self.assertEqual(self.offences(path, text), [])

    def test_an_orderly_house_is_fine(self):
        self.assertEqual(list(check_house.offences(self.root)), [])

    def test_a_folder_without_sources_is_refused(self):
        for exception in check_house.UNTESTED:
            (self.root / exception).unlink()
        for folder in check_house.CHECKED_FOLDERS:
            with self.subTest(folder):
                (self.root / folder / "some.h").unlink()
                found = list(check_house.offences(self.root))
                self.assertIn(f"{self.root / folder}: holds no source", "\n".join(found))
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
            with self.subTest(code):
                self.assert_refused("model/a.cpp", code + "\n")

    def test_names_in_comments_and_texts_are_fine(self):
        self.assert_fine("model/a.cpp", '// a QString, time(0)\n/* NSString\n */ f("getenv");\n')
        self.assert_fine("ui/b.cpp", "QuickWidgetController c; x.time(1); auto n = localTime(t);\n")

    def test_system_headers_are_refused(self):
        for header in ["unistd.h", "thread", "ctime", "fstream", "QString", "xcb/xcb.h", "iostream"]:
            with self.subTest(header):
                self.assert_refused("detect/a.cpp", f"#include <{header}>\n")
        self.assert_fine("detect/a.cpp", "#include <vector>\n#include <nlohmann/json.hpp>\n")

    def test_knowledge_goes_one_way(self):
        for path, header in [
            ("model/a.cpp", "detect/b.h"),
            ("model/a.cpp", "platform/clock.h"),
            ("model/a.h", "client/b.h"),
            ("detect/a.cpp", "client/b.h"),
            ("client/a.cpp", "detect/b.h"),
            ("client/a.cpp", "ui/b.h"),
            ("outbox/a.cpp", "ui/b.h"),
            ("ui/a.cpp", "app/entry.h"),
            ("ui/a.cpp", "platform/linux/views.h"),
            ("ui/a.cpp", "b.h"),
            ("model/a.cpp", "tests/support/world.h"),
        ]:
            with self.subTest(path + " " + header):
                self.assert_refused(path, f'#include "{header}"\n')
                (self.root / path).unlink()

    def test_allowed_knowledge_is_fine(self):
        for path, header in [
            ("model/a.cpp", "app/constants.h"),
            ("detect/a.cpp", "model/b.h"),
            ("client/a.cpp", "platform/clock.h"),
            ("ui/a.cpp", "client/b.h"),
            ("app/a.cpp", "ui/b.h"),
        ]:
            self.assert_fine(path, f'#include "{header}"\n')

    def test_the_delegate_is_known_to_its_own_bodies_only(self):
        line = '#include "app/app_delegate.h"\n'
        self.assert_fine("ui/delegate_menu.cpp", line)
        self.assert_fine("app/entry.cpp", line)
        self.assert_refused("ui/status_menu.cpp", line)

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
        for path, header in [
            ("looks/a.cpp", "platform/linux/tray/used.h"),
            ("tray/a.cpp", "platform/linux/views.h"),
            ("tray/a.h", "platform/posix/files.h"),
            ("tray/a.h", "platform/macos/tray/a.h"),
            ("tray/a.cpp", "model/record.h"),
            ("views.cpp", "ui/menu.h"),
        ]:
            with self.subTest(path + " " + header):
                self.assert_refused("platform/linux/" + path, f'#include "{header}"\n')
                (self.root / "platform/linux" / path).unlink()

    def test_allowed_knowledge_between_rooms_is_fine(self):
        self.furnish({"tray": ["looks"], "looks": []})
        for path, header in [
            ("tray/a.cpp", "platform/linux/looks/used.h"),
            ("tray/b.cpp", "platform/linux/tray/a.h"),
            ("looks/a.h", "platform/menu.h"),
            ("looks/a.cpp", "generated.h"),
            ("views.h", "platform/linux/tray/used.h"),
            ("files.h", "platform/posix/files.h"),
        ]:
            self.assert_fine("platform/linux/" + path, f'#include "{header}"\n')

    def test_a_room_without_a_row_is_refused(self):
        self.furnish({"tray": []})
        self.assert_refused("platform/linux/attic/a.h", "")

    def test_an_arrow_that_nothing_needs_is_refused(self):
        self.furnish({"tray": ["looks"], "looks": []})
        self.put("platform/linux/tray/used.h", "")
        self.assertEqual(
            list(check_house.offences(self.root)), ["platform/linux/tray: may know looks, and does not"]
        )

    def test_rooms_that_know_each_other_in_a_circle_are_refused(self):
        self.furnish({"tray": ["looks"], "looks": ["tray"]})
        self.assertEqual(
            list(check_house.offences(self.root)),
            [
                "platform/linux: the rooms go round in a circle: tray knows looks knows tray",
                "platform/linux: the rooms go round in a circle: looks knows tray knows looks",
            ],
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
            with self.subTest(folder):
                already = len(list((self.root / folder).glob("*.*")))
                for i in range(already, most):
                    self.put(f"{folder}/{i}.h", "")
                self.assert_fine("app/other.h", "")
                self.put(f"{folder}/one_too_many.h", "")
                self.assertEqual(
                    list(check_house.offences(self.root)), [f"{folder}: {most + 1} files, more than {most}"]
                )
                (self.root / folder / "one_too_many.h").unlink()

    def test_ports_know_plain_types_only(self):
        self.assert_refused("platform/clock.h", '#include "model/date.h"\n')
        self.assert_refused("platform/clock.h", "#include <QObject>\n")
        self.assert_fine("platform/clock.h", '#include <string>\n#include "platform/files.h"\n')

    def test_a_body_without_test_is_refused(self):
        self.put("model/a.cpp", "")
        self.assertEqual(
            list(check_house.offences(self.root)), ["model/a.cpp: has no tests/model/a_test.cpp"]
        )

    def test_an_exception_without_file_is_refused(self):
        (self.root / "app/main.cpp").rename(self.root / "app/other.cpp")
        self.put_test("app/other")
        self.assertEqual(len(list(check_house.offences(self.root))), 1)

    def test_a_file_of_401_lines_is_refused(self):
        for path in ["platform/linux/a.cpp", "tests/desktop/session"]:
            self.assert_fine(path, "\n" * 400)
            self.assert_refused(path, "\n" * 401)
            (self.root / path).unlink()

    def test_a_test_that_nobody_builds_is_refused(self):
        for path in ["tests/model/b_test.mm", "tests/desktop/test_b.py", "tests/b_test.py"]:
            with self.subTest(path):
                self.assert_refused(path, "")
                (self.root / path).unlink()

    def test_switched_off_tests_are_refused(self):
        self.assert_refused("tests/b.cpp", "TEST(A, " + "DISABLED_B) {}\n")


class BehaviourTest(unittest.TestCase):
    HEAD = "| What it does | Proof |\n|---|---|\n"

    def faults(self, *lines, known=("A", "b_test.py")):
        return list(check_behaviour.faults(self.HEAD + "\n".join(lines), set(known)))

    def test_a_list_that_names_every_suite_is_fine(self):
        self.assertEqual(self.faults("| does this | `A` |", "| and that | `A` `b_test.py` |"), [])

    def test_a_suite_that_does_not_exist_is_reported(self):
        self.assertEqual(self.faults("| does this | `A` `X` `b_test.py` |"), ["line 3: there is no suite X"])

    def test_a_suite_that_no_line_names_is_reported(self):
        self.assertEqual(self.faults("| does this | `A` |"), ["no line names the suite b_test.py"])

    def test_an_empty_list_is_reported(self):
        self.assertEqual(self.faults(known=()), ["the list is empty"])

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
            listing = "Running main()\nSuite.\n  First\nAll/Many/0.\n  Second/0  # GetParam() = 1\n"
            program.write_text(f"#!/bin/sh\nprintf '{listing}'\n")
            program.chmod(0o755)
            self.assertEqual(check_behaviour.suites_of_program(str(program)), {"Suite", "Many"})


if __name__ == "__main__":
    unittest.main()
