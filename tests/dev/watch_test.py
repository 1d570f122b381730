#!/usr/bin/env python3
"""What ./dev watch runs after which change."""

import os
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools" / "dev"))
import watch  # noqa: E402

ROOT = pathlib.Path("/tree")
# A test of a folder is declared through a function: its folder is that of the nearest CMakeLists.txt.
LISTING = {
    "backtraceGraph": {
        "files": ["/tree/tests/support/TestPrograms.cmake", "/tree/tests/array/CMakeLists.txt",
                  "/tree/tests/CMakeLists.txt", "/tree/tests/cli/CMakeLists.txt", "/tree/tests/bounded/CMakeLists.txt"],
        "nodes": [{"file": 2}, {"file": 1, "parent": 0}, {"file": 0, "parent": 1},
                  {"file": 3, "parent": 0}, {"file": 4, "parent": 0}],
    },
    "tests": [
        {"name": "array_test", "backtrace": 2, "properties": [{"name": "LABELS", "value": ["quick", "array"]}]},
        {"name": "cli_check", "backtrace": 3, "properties": [{"name": "LABELS", "value": ["cli"]}]},
        {"name": "cli_text_test", "backtrace": 3, "properties": [{"name": "LABELS", "value": ["quick", "cli"]}]},
        {"name": "mutants", "backtrace": 4, "properties": [{"name": "LABELS", "value": ["slow"]}]},
    ],
}


class Choice(unittest.TestCase):
    def setUp(self):
        self.tests = watch.topics(LISTING, ROOT)

    def test_a_test_belongs_to_the_folder_that_declares_it(self):
        self.assertEqual("tests/array", self.tests["array_test"][0])
        self.assertEqual("tests/cli", self.tests["cli_check"][0])

    def test_a_test_file_runs_the_tests_of_its_folder(self):
        self.assertEqual(["array_test"], watch.tests_for(["tests/array/store_test.cpp"], self.tests))

    def test_the_command_line_runs_its_own_tests(self):
        self.assertEqual(["cli_check", "cli_text_test"], watch.tests_for(["tools/tavo/verbs/verb_fmt.cpp"], self.tests))

    def test_the_library_and_what_all_tests_share_run_all_quick_tests(self):
        for file in ("Src/TAVOParser/array/key_value_array.cpp", "tests/support/parse_run.h", "tests/CMakeLists.txt"):
            self.assertEqual(["array_test", "cli_text_test"], watch.tests_for([file], self.tests), file)

    def test_slow_tests_never_run(self):
        self.assertEqual([], watch.tests_for(["tests/bounded/CMakeLists.txt"], self.tests))


class Snapshot(unittest.TestCase):
    def test_sees_new_changed_and_removed_files_and_no_hidden_ones(self):
        with tempfile.TemporaryDirectory() as name:
            root = pathlib.Path(name)
            (root / "Src").mkdir()
            (root / "Src" / "kept.cpp").write_text("1")
            (root / "Src" / "gone.cpp").write_text("1")
            before = watch.snapshot(root)
            self.assertEqual({"Src/kept.cpp", "Src/gone.cpp"}, before.keys())
            (root / "Src" / "gone.cpp").unlink()
            (root / "Src" / "new.cpp").write_text("1")
            (root / "Src" / ".new.cpp.swp").write_text("1")
            os.utime(root / "Src" / "kept.cpp", ns=(1, 1))
            after = watch.snapshot(root)
            self.assertEqual(["Src/gone.cpp", "Src/kept.cpp", "Src/new.cpp"], watch.changed(before, after))


if __name__ == "__main__":
    unittest.main()
