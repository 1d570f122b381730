"""What the checks of statements share."""

import unittest

from recogniser import Error, recognise


def pairs(text):
    return [tuple(pair) for pair in recognise(text, fill=True).pairs]


class Case(unittest.TestCase):

    def accepted(self, text, *expected):
        """Accepted in both runs, with exactly these pairs; without any only the acceptance is looked at."""
        self.assertEqual(recognise(text, fill=False).status, 0, text)
        filling = recognise(text, fill=True)
        self.assertEqual((filling.status, filling.errors), (0, []), text)
        if expected:
            self.assertEqual([tuple(pair) for pair in filling.pairs], list(expected), text)

    def invalid(self, text, number, key=None):
        """The grammar has nothing against it, the provider's rules have."""
        self.assertEqual(recognise(text, fill=False).status, 0, text)
        filling = recognise(text, fill=True)
        self.assertEqual((filling.status, filling.errors), (7148, [Error(number, key_text=key)]), text)

    def syntax(self, text, position, stored=None):
        """7139 at this position in both runs, the text up to it as excerpt."""
        for fill in (False, True):
            run = recognise(text, fill=fill)
            self.assertEqual((run.status, run.errors), (7148, [Error(7139, position, text[:position])]), text)
        if stored is not None:
            self.assertEqual(pairs(text), stored, text)
