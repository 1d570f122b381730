#!/usr/bin/env python3
"""Checks the modules of docs/modules.toml: the includes of the tree, and the drawn list."""
import copy
import pathlib
import subprocess
import sys
import unittest

PICTURES = pathlib.Path(__file__).resolve().parents[2] / "docs" / "pictures"
sys.path.insert(0, str(PICTURES))
sys.dont_write_bytecode = True
import modules  # noqa: E402

LISTED = {
    "part": [{"name": "tool", "base": "tools/t", "search": ["tools/t", "include"]},
             {"name": "library", "base": "Src", "search": ["Src", "include"]},
             {"name": "platform", "base": "platform", "search": ["platform", "Src"]},
             {"name": "headers", "base": "include", "search": [], "ground": True}],
    "rule": [{"from": "Src", "never": ["platform"], "because": "the interface is enough"}],
    "module": [
        {"path": "tools/t", "holds": "", "may": [], "never": ""},
        {"path": "Src/high", "holds": "", "may": ["low"], "never": ""},
        {"path": "Src/low", "holds": "", "may": [], "never": ""},
        {"path": "platform", "holds": "", "may": ["Src/low"], "never": ""},
        {"path": "include", "holds": "", "may": [], "never": ""}],
}
FILES = {
    "tools/t/main.cpp": "#include <api.h>\n#include <vector>\n",
    "Src/high/a.cpp": '#include "high/a.h"\n#include "low/b.h"\n#include "api.h"\n',
    "Src/high/a.h": "",
    "Src/low/b.h": "#pragma once\n",
    "platform/p.cpp": '#include "low/b.h"\n',
    "platform/p.h": "",
    "include/api.h": "",
}


def errors(listed=LISTED, **changed):
    files = dict(FILES)
    files.update({path.replace("__", "/") + ".h": text for path, text in changed.items()})
    tree = modules.Tree(copy.deepcopy(listed), files)
    tree.check_list()
    tree.check_includes()
    return tree.errors


class Includes(unittest.TestCase):
    def expect(self, found, *parts):
        self.assertEqual(1, len(found), found)
        for part in parts:
            self.assertIn(part, found[0])

    def test_includes_that_point_down_pass(self):
        self.assertEqual([], errors())

    def test_an_include_that_points_up_names_both_modules_and_what_to_do(self):
        self.expect(errors(Src__low__c='#include "high/a.h"\n'), "Src/low/c.h", "Src/high",
                    "may include: none", 'add "high" to its `may`')

    def test_a_detour_through_parent_folders_counts(self):
        self.expect(errors(Src__low__c='#  include "../high/a.h"\n'), "Src/low/c.h", "Src/high")

    def test_angle_brackets_count(self):
        self.expect(errors(Src__low__c="#include <high/a.h>\n"), "Src/low/c.h", "Src/high")

    def test_a_rule_holds_whatever_the_list_allows(self):
        self.expect(errors(Src__low__c='#include "../../platform/p.h"\n'), "interface is enough")
        listed = copy.deepcopy(LISTED)
        listed["module"][1]["may"] = ["low", "platform"]
        self.assertTrue(any("interface is enough" in error for error in errors(listed)))

    def test_a_public_header_may_be_included_by_all_and_includes_nothing(self):
        self.assertEqual([], errors(Src__low__c='#include "api.h"\n'))
        self.expect(errors(include__more='#include "low/b.h"\n'), "include/more.h", "Src/low")

    def test_a_file_without_a_module_is_told_what_to_add(self):
        self.expect(errors(Src__new__n=""), "Src/new/n.h", "[[module]]", 'path = "Src/new"')

    def test_a_missing_header_is_named(self):
        self.expect(errors(Src__low__c='#include "low/gone.h"\n'), "low/gone.h", "not in the tree")

    def test_a_module_without_files_is_named(self):
        listed = copy.deepcopy(LISTED)
        listed["module"].append({"path": "Src/empty", "holds": "", "may": [], "never": ""})
        self.expect(errors(listed), "Src/empty has no files")

    def test_an_unknown_name_lists_the_known_ones(self):
        listed = copy.deepcopy(LISTED)
        listed["module"][1]["may"] = ["low", "lwo"]
        self.expect(errors(listed), "'lwo'", "high, low")

    def test_a_circle_is_named(self):
        listed = copy.deepcopy(LISTED)
        listed["module"][2]["may"] = ["high"]
        self.expect(errors(listed), "Src/high -> Src/low -> Src/high")

    def test_includes_of_the_tree(self):
        """The tree itself, and the picture and the table that are drawn of the list."""
        done = subprocess.run([sys.executable, str(PICTURES / "modules.py"), "--check"],
                              capture_output=True, text=True)
        self.assertEqual(0, done.returncode, "\n" + done.stdout + done.stderr)


if __name__ == "__main__":
    unittest.main()
