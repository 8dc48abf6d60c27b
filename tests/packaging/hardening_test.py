"""What the compiler and the linker did against memory errors, read back from the program.

hardening_test.py PROGRAM LIBRARY
"""

import platform
import subprocess
import sys
import unittest

LIBRARY = sys.argv.pop(2)
PROGRAM = sys.argv.pop(1)
BRANCH_PROTECTION = {"x86_64": "IBT, SHSTK", "aarch64": "BTI, PAC"}


def readelf(option, file):
    command = ("readelf", "--wide", option, file)
    return subprocess.run(command, check=True, capture_output=True, text=True, timeout=60).stdout


class Hardening(unittest.TestCase):
    def test_the_program_may_stand_anywhere_in_memory(self):
        self.assertRegex(readelf("--file-header", PROGRAM), r"Type:\s+DYN")

    def test_its_tables_of_functions_cannot_be_written(self):
        self.assertIn("GNU_RELRO", readelf("--program-headers", PROGRAM))
        self.assertIn("BIND_NOW", readelf("--dynamic", PROGRAM))

    def test_its_stack_holds_no_code(self):
        (stack,) = [
            line for line in readelf("--program-headers", PROGRAM).splitlines() if "GNU_STACK" in line
        ]
        self.assertRegex(stack, r"\bRW\b")

    def test_a_written_over_stack_or_buffer_ends_it(self):
        functions = readelf("--dyn-syms", PROGRAM)
        self.assertIn("__stack_chk_fail", functions)
        self.assertRegex(functions, r"__\w+_chk\b(?<!__stack_chk)")

    def test_our_own_code_is_compiled_with_branch_protection(self):
        notes = readelf("--notes", LIBRARY)
        files = notes.count("\nFile: ") + notes.startswith("File: ")
        self.assertGreater(files, 0)
        self.assertEqual(notes.count(BRANCH_PROTECTION[platform.machine()]), files)


if __name__ == "__main__":
    unittest.main()
