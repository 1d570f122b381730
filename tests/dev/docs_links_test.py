#!/usr/bin/env python3
"""Which links of a document lead nowhere."""

import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools" / "dev"))
import docs_links  # noqa: E402


class Links(unittest.TestCase):
    def problems(self, text: str) -> list[str]:
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "other.md").write_text("# A `word`, and more\n\n## Twice\n\n## Twice\n")
            (folder / "a b.svg").write_text("")
            page = folder / "page.md"
            page.write_text(text)
            return [problem.replace(f"{page}:", "") for problem in docs_links.problems(page)]

    def test_accepts_files_headings_and_what_is_elsewhere(self):
        for good in ("[a](other.md)", "[a](other.md#a-word-and-more)", "[a](other.md#twice-1)", "![a](a%20b.svg)",
                     "# Here\n[a](#here)", "[a](https://example.com/none)", "[a]: other.md", '<img src="a b.svg">'):
            self.assertEqual([], self.problems(good), good)

    def test_names_line_and_target_of_a_link_that_leads_nowhere(self):
        self.assertEqual(["2: no such file: none.md"], self.problems("\n[a](none.md)"))
        self.assertEqual(["1: no such heading: other.md#twice-2"], self.problems("[a](other.md#twice-2)"))
        self.assertEqual(["1: no such heading: #there"], self.problems("# Here [a](#there)"))
        self.assertEqual(["1: no such file: none.svg"], self.problems('<img src="none.svg">'))
        self.assertEqual(["1: no such file: none.md"], self.problems("[a]: none.md"))

    def test_code_holds_no_links(self):
        self.assertEqual([], self.problems("`[a](none.md)`\n\n```\n[a](none.md)\n```\n"))


if __name__ == "__main__":
    unittest.main()
