"""Checks of the generator and of the comparison, against drivers that are right, wrong and dying.

    python3 -m unittest discover -s tests/second_opinion
"""

import collections
import os
import subprocess
import sys
import unittest

FOLDER = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, FOLDER)

import systematic  # noqa: E402
from compare import Driver, own_statement_answer, own_token_answer, same  # noqa: E402
from generate import statements  # noqa: E402
from grammar import PROVIDERS  # noqa: E402
from recogniser import recognise  # noqa: E402

SELF_DRIVER = f"{sys.executable} {os.path.join(FOLDER, 'self_driver.py')}"


def compare(*arguments):
    return subprocess.run([sys.executable, os.path.join(FOLDER, "compare.py"), *arguments], capture_output=True, text=True)


class Generated(unittest.TestCase):

    def test_the_same_seed_gives_the_same_statements(self):
        self.assertEqual(list(statements("a", 200)), list(statements("a", 200)))
        self.assertNotEqual(list(statements("a", 200)), list(statements("b", 200)))

    def test_no_statement_is_empty_or_holds_what_the_protocol_cannot_carry(self):
        for _, text in statements("c", 5000):
            self.assertTrue(text)
            self.assertNotIn("\0", text)
            text.encode("utf-8")  # a lone surrogate would raise

    def test_every_class_and_most_numbers_come_up(self):
        kinds, numbers = collections.Counter(), collections.Counter()
        for kind, text in statements("d", 20000):
            kinds[kind] += 1
            numbers.update(error.number for error in recognise(text, fill=True).errors)
        self.assertEqual(set(kinds), {"valid", "wrong", "limits", "words", "noise"})
        self.assertGreater(len(numbers), 65)

    def test_most_valid_statements_have_no_syntax_error(self):
        valid = [text for kind, text in statements("e", 5000) if kind == "valid"]
        wrong = [text for text in valid if recognise(text, fill=False).status]
        self.assertLess(len(wrong), len(valid) / 50)

    def test_the_systematic_statements_store_every_option_of_every_provider(self):
        stored = collections.defaultdict(set)
        for text in systematic.options():
            result = recognise(text, fill=True)
            if len(result.pairs) == 2:
                stored[result.pairs[0].value_type].add(result.pairs[1].key_type)
        for provider in PROVIDERS.values():
            keys = {option.key_type for option in provider.options.values() if hasattr(option, "key_type")}
            self.assertEqual(keys - stored[provider.value_type], set())


class Comparison(unittest.TestCase):

    def test_a_right_driver_passes(self):
        for mode in ([], ["--tokens"]):
            run = compare("--driver", SELF_DRIVER, "--count", "2000", *mode)
            self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
            self.assertIn("no difference", run.stdout)

    def test_a_wrong_driver_is_found_and_its_statement_made_small(self):
        run = compare("--driver", SELF_DRIVER + " --slip", "--count", "4000", "--stop", "1")
        self.assertEqual(run.returncode, 1, run.stdout + run.stderr)
        self.assertRegex(run.stdout.upper(), r'MINIMISED +"PRO(VIDER)?=CCN,PAT(TERN)?=8C"')
        run = compare("--driver", SELF_DRIVER + " --slip", "--count", "1000", "--stop", "1", "--tokens")
        self.assertEqual(run.returncode, 1, run.stdout + run.stderr)
        self.assertRegex(run.stdout, r'minimised +"(//|/\*\*/)"')

    def test_what_one_call_says_differently_is_a_difference(self):
        for text in ("PRO=CCN, PAT=6C", "PRO=XYZ", "PRO=LOOKUP"):
            own = own_statement_answer(text)
            for name, wrong in (("status", 1), ("pairs", [[1, "a", 2, "b"]]), ("errors", [{"id": 1}])):
                self.assertFalse(same(own, {**own, "read": {**own["read"], name: wrong}}), (text, name))

    def test_a_driver_that_ends_early_is_found(self):
        run = compare("--driver", SELF_DRIVER + " --fall", "--count", "1000", "--stop", "1")
        self.assertEqual(run.returncode, 1, run.stdout + run.stderr)
        self.assertIn("exit code 3", run.stdout)

    def test_statements_after_a_lost_answer_are_still_compared(self):
        driver = Driver(SELF_DRIVER + " --fall", token_mode=False)
        answers, ending = driver.answers(["PRO=CCN", "PRO='", "PRO=CCN"])
        self.assertEqual([answer is None for answer in answers], [False, True, True])
        self.assertIn("exit code 3", ending)

    def test_every_field_counts(self):
        own = own_statement_answer("PRO=HASH, FLDDEF=(NAME=A)")
        self.assertTrue(same(own, own))
        for change in ({"status": 0}, {"flag": 0}, {"pairs": []}, {"errors": []}, {"sizing": {"status": 0, "count": 1}},
                       {"errors": [{"id": 7145}]}, {"errors": own["errors"] * 2}):
            self.assertFalse(same(own, {**own, **change}), change)
        own = own_token_answer("PRO")
        self.assertFalse(same(own, {**own, "broken": 0}))

    def test_a_refused_trace_level_may_have_any_number_but_the_parsers_own(self):
        own = own_statement_answer('PRO=CCN, TRCLEVEL="loud"')
        self.assertTrue(same(own, {**own, "errors": [{"id": 12345}]}))
        self.assertTrue(same(own, {**own, "errors": [{"id": 7175}]}))
        self.assertFalse(same(own, {**own, "errors": [{"id": 7139}]}))
        self.assertFalse(same(own, {**own, "errors": [{"id": 7144}]}))
        self.assertFalse(same(own, {**own, "errors": []}))


if __name__ == "__main__":
    unittest.main()
